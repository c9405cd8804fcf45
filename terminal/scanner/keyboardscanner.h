#pragma once

#include <scanner/keyboardlayout.h>

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QVector>
#include <QWindow>

/// Types a code as a scanner that pretends to be a keyboard does: key by key, into whatever has the
/// focus.
///
/// The keys take the way of real ones, through the window that has the focus: Enter may press a
/// default button, Tab goes to the next field, and what follows lands there. The window that has
/// the focus at the start is the target; typing ends when it goes away, so that the rest of a code
/// never lands in a window behind it. A dialog that opens above the target gets the keys, as it
/// would from a device.
class KeyboardScanner final : public QObject
{
    Q_OBJECT

public:
    enum class Suffix { None, Enter, Tab, EnterTwice };
    Q_ENUM(Suffix)
    enum class Outcome {
        Done,
        Cancelled,
        NoFocus,   ///< nothing has had the focus for a second: there is nowhere to type
        TargetGone ///< the target window was closed or hidden
    };
    Q_ENUM(Outcome)

    static constexpr int MAXIMUM_PAUSE = 50;

    struct Options
    {
        Suffix suffix = Suffix::Enter;
        int keyPause = 2; ///< milliseconds, 0 to MAXIMUM_PAUSE
        /// Milliseconds of silence in the middle of the text: slow devices send a long code in two
        /// bursts. 0: none.
        int burstPause = 0;
        KeyboardLayout::Mishap mishap = KeyboardLayout::Mishap::None;
    };

    explicit KeyboardScanner(QObject *parent = nullptr);
    ~KeyboardScanner() override;

    /// Begins at the next turn of the event loop. A scan that is under way is cancelled first.
    void type(const QString &text, const Options &options);
    /// finished() with Cancelled follows at once; nothing happens when nothing is being typed.
    void cancel();
    bool isTyping() const { return m_typing; }

    static QString outcomeText(Outcome outcome);

signals:
    /// Keys so far and in all, the suffix included.
    void progress(int typed, int total);
    void finished(KeyboardScanner::Outcome outcome);

private:
    struct Key
    {
        int code = 0;
        QString text;
        Qt::KeyboardModifiers modifiers;
    };

    static Key keyFor(const QString &character);
    void pressNext();
    void finish(Outcome outcome);

    QTimer m_timer;
    QElapsedTimer m_withoutFocus;
    QPointer<QWindow> m_target;
    QVector<Key> m_keys;
    Options m_options;
    int m_next = 0;
    int m_breakAt = -1;
    bool m_typing = false;
};
