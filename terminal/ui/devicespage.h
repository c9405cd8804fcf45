#pragma once

#include <QWidget>

class DeviceBox;
class DeviceControl;
class QCheckBox;
class QComboBox;
class QLabel;
class QTableWidget;

/// The states of the register, the card terminal and billing, to be changed at any time, and the
/// amounts that the card terminal answers in a way of their own.
class DevicesPage final : public QWidget
{
    Q_OBJECT

public:
    /// `control` must outlive the page.
    explicit DevicesPage(DeviceControl &control, QWidget *parent = nullptr);

private:
    DeviceBox *makeRegister();
    DeviceBox *makeCard();
    DeviceBox *makeBilling();
    QWidget *makeAmounts();
    void follow();
    void showBusy(bool busy);

    DeviceControl &m_control;
    QLabel *m_hint;
    QComboBox *m_terminal;
    QCheckBox *m_link;
};
