#include "devicealert.h"

#include <devices/devicecontrol.h>

#include <molvacore/posactivity.h>

#include <QStringList>

DeviceAlert::DeviceAlert(const DeviceControl &control, QWidget *parent)
    : QLabel(parent), m_control(control)
{
    setObjectName(QStringLiteral("lDeviceAlert"));
    setTextFormat(Qt::PlainText);
    setStyleSheet(QStringLiteral("color: #b02020"));
    connect(&control, &DeviceControl::changed, this, &DeviceAlert::follow);
    connect(PosActivity::instance(), &PosActivity::busyChanged, this, &DeviceAlert::follow);
    follow();
}

void DeviceAlert::follow()
{
    QStringList texts;
    if (PosActivity::busy())
        texts.append(tr("Карточный терминал ждёт карту…"));
    // The register's own state stands in the status bar at all times.
    for (const Device device : {Device::Card, Device::Billing}) {
        if (m_control.isFaulty(device))
            texts.append(QStringLiteral("%1: %2").arg(DeviceStates::title(device),
                                                      m_control.stateTitle(device)));
    }
    setText(texts.join(QStringLiteral(" · ")));
    setToolTip(tr("Имитация сбоя. Сменить состояние — F7."));
    setVisible(!texts.isEmpty());
}
