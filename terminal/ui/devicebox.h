#pragma once

#include <devices/devicestates.h>

#include <QGroupBox>

class DeviceControl;
class QLabel;
class QListWidget;
class QVBoxLayout;

/// The states of one device as a list, in which the chosen row is the state that counts.
class DeviceBox final : public QGroupBox
{
    Q_OBJECT

public:
    /// `control` must outlive the box.
    DeviceBox(DeviceControl &control, Device device, QWidget *parent = nullptr);

    /// Below the list, for what this device has besides its states.
    void addControl(QWidget *widget);
    /// The next chosen state lasts for one receipt only.
    void setOnce(bool once) { m_once = once; }

    /// Keeps the chosen row in sight when the list has been resized or shown again.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fill();
    void choose(int row);
    void follow();
    void revealChosen();

    DeviceControl &m_control;
    Device m_device;
    QListWidget *m_list;
    QLabel *m_effect;
    QVBoxLayout *m_layout;
    bool m_once = false;
};
