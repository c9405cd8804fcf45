#pragma once

#include <QLabel>

class DeviceControl;

/// Names the devices that are in a state of trouble on purpose, in the cashier's status bar; takes
/// no room when there are none. Says, too, when the card terminal is waiting.
class DeviceAlert final : public QLabel
{
    Q_OBJECT

public:
    /// `control` must outlive the label.
    explicit DeviceAlert(const DeviceControl &control, QWidget *parent = nullptr);

private:
    void follow();

    const DeviceControl &m_control;
};
