#include "devicebox.h"

#include "shownreason.h"

#include <devices/devicecontrol.h>

#include <QEvent>
#include <QLabel>
#include <QListWidget>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

constexpr int keyRole = Qt::UserRole;

} // namespace

DeviceBox::DeviceBox(DeviceControl &control, Device device, QWidget *parent)
    : QGroupBox(DeviceStates::title(device), parent),
      m_control(control),
      m_device(device),
      m_list(new QListWidget(this)),
      m_effect(new QLabel(this)),
      m_layout(new QVBoxLayout(this))
{
    m_list->setObjectName(QStringLiteral("lw_") + DeviceStates::option(device));
    m_list->setAccessibleName(DeviceStates::title(device));
    m_list->setAlternatingRowColors(true);
    m_list->setWordWrap(true);
    m_list->setResizeMode(QListView::Adjust);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_effect->setObjectName(QStringLiteral("lEffect_") + DeviceStates::option(device));
    m_effect->setWordWrap(true);
    m_effect->setTextFormat(Qt::PlainText);
    m_effect->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    // The longest text has room, so the lists do not jump from state to state.
    m_effect->setMinimumHeight(4 * m_effect->fontMetrics().lineSpacing());
    // A state that nobody knows must not widen the window.
    m_effect->setMinimumWidth(1);
    m_layout->addWidget(m_list, 1);
    m_layout->addWidget(m_effect);
    fill();
    follow();
    m_list->viewport()->installEventFilter(this);
    connect(m_list, &QListWidget::currentRowChanged, this, &DeviceBox::choose);
    connect(&control, &DeviceControl::changed, this, &DeviceBox::follow);
}

void DeviceBox::addControl(QWidget *widget)
{
    m_layout->addWidget(widget);
}

bool DeviceBox::eventFilter(QObject *watched, QEvent *event)
{
    // Only afterwards has the list laid out its rows anew.
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show)
        QMetaObject::invokeMethod(this, &DeviceBox::revealChosen, Qt::QueuedConnection);
    return QGroupBox::eventFilter(watched, event);
}

void DeviceBox::revealChosen()
{
    if (const QListWidgetItem *chosen = m_list->currentItem())
        m_list->scrollToItem(chosen);
}

void DeviceBox::fill()
{
    for (const DeviceState &state : DeviceStates::of(m_device)) {
        auto *item = new QListWidgetItem(state.title, m_list);
        item->setData(keyRole, state.key);
        item->setToolTip(QStringLiteral("--%1 %2\n%3 %4")
                             .arg(DeviceStates::option(m_device), state.key,
                                  DeviceStates::word(m_device), state.phrase));
    }
    m_list->setEnabled(m_control.controls(m_device));
    // Wide enough for the longest word while its title is the chosen one: a title may take two
    // lines, so that the window fits beside a payment.
    QFont bold = m_list->font();
    bold.setBold(true);
    const QFontMetrics metrics(bold);
    int width = 0;
    for (const DeviceState &state : DeviceStates::of(m_device)) {
        const QStringList words = state.title.split(QLatin1Char(' '));
        for (const QString &word : words)
            width = qMax(width, metrics.horizontalAdvance(word));
    }
    const int scrollBar = m_list->verticalScrollBar()->sizeHint().width();
    m_list->setMinimumWidth(width + scrollBar + 2 * m_list->frameWidth()
                            + 2 * metrics.averageCharWidth());
}

void DeviceBox::choose(int row)
{
    const QListWidgetItem *item = m_list->item(row);
    if (!item || m_control.setState(m_device, item->data(keyRole).toString(), m_once))
        return;
    const QString error = m_control.error();
    follow();
    showWarning(this, title(), error);
}

void DeviceBox::follow()
{
    const QString key = m_control.state(m_device);
    const DeviceState *state = DeviceStates::find(m_device, key);
    const QSignalBlocker blocker(m_list);
    const int before = m_list->currentRow();
    m_list->setCurrentRow(DeviceStates::keys(m_device).indexOf(key));
    for (int row = 0; row < m_list->count(); ++row) {
        QFont font = m_list->font();
        font.setBold(row == m_list->currentRow());
        m_list->item(row)->setFont(font);
    }
    // In bold its title may take another line.
    if (m_list->currentRow() != before)
        revealChosen();
    if (!m_control.controls(m_device))
        m_effect->setText(tr("Биллинг работает за сервером сообщений, его состояния отсюда не "
                             "меняются."));
    else
        m_effect->setText(state ? state->effect : shownReason(key));
}
