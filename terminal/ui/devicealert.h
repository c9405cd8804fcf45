#pragma once

#include <QLabel>

class DeviceControl;

/// Names the devices that are in a state of trouble on purpose, in the cashier's status bar; takes
/// no room when there are none and gives way, cut short, to what else stands there. Says, too, when
/// the card terminal is waiting.
class DeviceAlert final : public QLabel
{
    Q_OBJECT

public:
    /// `control` must outlive the label.
    explicit DeviceAlert(const DeviceControl &control, QWidget *parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void follow();

    const DeviceControl &m_control;
};
