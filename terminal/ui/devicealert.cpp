#include "devicealert.h"

#include <devices/devicecontrol.h>
#include <text/showntext.h>

#include <molvacore/posactivity.h>

#include <QPainter>
#include <QStringList>
#include <QStyle>

DeviceAlert::DeviceAlert(const DeviceControl &control, QWidget *parent)
    : QLabel(parent), m_control(control)
{
    setObjectName(QStringLiteral("lDeviceAlert"));
    setTextFormat(Qt::PlainText);
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, QColor(0xb0, 0x20, 0x20));
    setPalette(colours);
    connect(&control, &DeviceControl::changed, this, &DeviceAlert::follow);
    connect(PosActivity::instance(), &PosActivity::busyChanged, this, &DeviceAlert::follow);
    follow();
}

QSize DeviceAlert::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 4, QLabel::minimumSizeHint().height()};
}

void DeviceAlert::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(),
                          isEnabled(), shown, QPalette::WindowText);
}

void DeviceAlert::follow()
{
    QStringList texts;
    if (PosActivity::busy())
        texts.append(tr("Карточный терминал ждёт карту…"));
    // The register's own state stands in the status bar at all times.
    for (const Device device : {Device::Card, Device::Billing}) {
        if (m_control.isFaulty(device))
            texts.append(QStringLiteral("%1: %2").arg(DeviceStates::word(device),
                                                      shownCell(m_control.stateTitle(device))));
    }
    setText(texts.join(QStringLiteral(" · ")));
    setToolTip(tr("Имитация сбоя, F7 — устройства:\n%1")
                   .arg(texts.join(QLatin1Char('\n')))
                   .toHtmlEscaped());
    setVisible(!texts.isEmpty());
}
