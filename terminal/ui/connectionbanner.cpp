#include "connectionbanner.h"

#include <bus/messagebus.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

namespace {

constexpr int COUNT_MS = 1000;

} // namespace

ConnectionBanner::ConnectionBanner(const MessageBus &bus, QWidget *parent)
    : QFrame(parent), m_bus(bus), m_text(new QLabel(this)), m_timer(this)
{
    setObjectName(QStringLiteral("fConnectionBanner"));
    setStyleSheet(QStringLiteral("#fConnectionBanner { background: #fff3cd; border: none; "
                                 "border-bottom: 1px solid #d39e00; }"
                                 "#fConnectionBanner QLabel { color: #3d2c00; }"));
    auto *icon = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size));
    m_text->setObjectName(QStringLiteral("lConnectionBanner"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(icon, 0, Qt::AlignTop);
    layout->addWidget(m_text, 1);
    hide();

    connect(&m_timer, &QTimer::timeout, this, &ConnectionBanner::show);
    connect(&bus, &MessageBus::stateChanged, this, &ConnectionBanner::follow);
    follow();
}

void ConnectionBanner::follow()
{
    if (m_bus.connected()) {
        m_timer.stop();
        hide();
    } else if (!isHidden()) {
        show();
    } else if (!m_timer.isActive()) {
        m_timer.start(PATIENCE_MS);
    }
}

void ConnectionBanner::show()
{
    m_timer.start(COUNT_MS);
    m_text->setText(tr("%1\nСчёт сейчас не запросить. Принятые платежи сохранены и уйдут "
                       "сами, когда связь вернётся.")
                        .arg(m_bus.stateText()));
    setVisible(true);
}
