#include "keyboardscanner.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>

namespace {

constexpr int focusPatience =
    1000; // milliseconds: a dialog that closes leaves no focus for a moment
constexpr int focusPoll = 20;

/// The window that takes keys now; null while a dialog is opening or closing.
QWindow *keyWindow()
{
    QWindow *window = QGuiApplication::focusWindow();
    if (!window || !window->isVisible())
        return nullptr;
    const QWindow *modal = QGuiApplication::modalWindow();
    // Keys for a window that a modal dialog blocks would be lost.
    const bool blocked =
        modal && modal != window && !modal->isAncestorOf(window, QWindow::IncludeTransients);
    return blocked ? nullptr : window;
}

} // namespace

KeyboardScanner::KeyboardScanner(QObject *parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &KeyboardScanner::pressNext);
}

KeyboardScanner::~KeyboardScanner() = default;

KeyboardScanner::Key KeyboardScanner::keyFor(const QString &character)
{
    const QChar c = character.at(0);
    if (c == QLatin1Char('\r') || c == QLatin1Char('\n'))
        return {Qt::Key_Return, QStringLiteral("\r"), Qt::NoModifier};
    if (c == QLatin1Char('\t'))
        return {Qt::Key_Tab, QStringLiteral("\t"), Qt::NoModifier};
    if (c.unicode() < 0x20)
        return {'@' + c.unicode(), character, Qt::ControlModifier};
    if (character.size() > 1)
        return {Qt::Key_unknown, character, Qt::NoModifier};
    return {c.toUpper().unicode(), character, c.isUpper() ? Qt::ShiftModifier : Qt::NoModifier};
}

void KeyboardScanner::type(const QString &text, const Options &options)
{
    cancel();
    m_options = options;
    m_options.keyPause = qBound(0, options.keyPause, MAXIMUM_PAUSE);
    m_keys.clear();
    const QString typed = KeyboardLayout::typed(text, options.mishap);
    for (int i = 0; i < typed.size(); ++i) {
        const bool lineEnd = typed.at(i) == QLatin1Char('\r') && i + 1 < typed.size()
            && typed.at(i + 1) == QLatin1Char('\n');
        const bool pair = typed.at(i).isHighSurrogate() && i + 1 < typed.size();
        m_keys.append(keyFor(typed.mid(i, pair ? 2 : 1)));
        if (lineEnd || pair)
            ++i;
    }
    m_breakAt = options.burstPause > 0 ? m_keys.size() / 2 : -1;
    switch (options.suffix) {
    case Suffix::None:
        break;
    case Suffix::EnterTwice:
        m_keys.append(keyFor(QStringLiteral("\r")));
        Q_FALLTHROUGH();
    case Suffix::Enter:
        m_keys.append(keyFor(QStringLiteral("\r")));
        break;
    case Suffix::Tab:
        m_keys.append(keyFor(QStringLiteral("\t")));
        break;
    }
    m_next = 0;
    m_target = keyWindow();
    m_withoutFocus.invalidate();
    m_typing = true;
    m_timer.start(0);
}

void KeyboardScanner::cancel()
{
    if (m_typing)
        finish(Outcome::Cancelled);
}

void KeyboardScanner::pressNext()
{
    if (m_next >= m_keys.size()) {
        finish(Outcome::Done);
        return;
    }
    if (m_next > 0 && (!m_target || !m_target->isVisible())) {
        finish(Outcome::TargetGone);
        return;
    }
    QWindow *window = keyWindow();
    if (!window) {
        if (!m_withoutFocus.isValid())
            m_withoutFocus.start();
        if (m_withoutFocus.elapsed() > focusPatience)
            finish(Outcome::NoFocus);
        else
            m_timer.start(focusPoll);
        return;
    }
    m_withoutFocus.invalidate();
    if (!m_target)
        m_target = window;

    const Key key = m_keys.at(m_next);
    ++m_next;
    QCoreApplication::postEvent(window,
                                new QKeyEvent(QEvent::KeyPress, key.code, key.modifiers, key.text));
    QCoreApplication::postEvent(
        window, new QKeyEvent(QEvent::KeyRelease, key.code, key.modifiers, key.text));
    // Started before anything is told: a key or a listener may open a dialog, and the device types
    // on into it.
    m_timer.start(m_next == m_breakAt ? m_options.burstPause : m_options.keyPause);
    emit progress(m_next, m_keys.size());
}

void KeyboardScanner::finish(Outcome outcome)
{
    m_timer.stop();
    m_typing = false;
    m_keys.clear();
    emit finished(outcome);
}

QString KeyboardScanner::outcomeText(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Done:
        return QStringLiteral("Код напечатан.");
    case Outcome::Cancelled:
        return QStringLiteral("Печать остановлена, код введён не весь. Очистите поле и повторите.");
    case Outcome::NoFocus:
        return QStringLiteral("Печатать некуда: ни одно окно этой программы не выбрано. Поставьте "
                              "курсор в поле и повторите.");
    case Outcome::TargetGone:
        return QStringLiteral(
            "Окно, в которое печатался код, закрылось; остаток кода никуда не попал.");
    }
    return QString();
}
