#pragma once

#include <QString>

#include <functional>

class QWidget;

/// Work that may take long, done on a thread of its own while the person sees how far it is and can
/// stop it. What is done within half a second shows nothing.
class LongWork final
{
public:
    /// Called by the work between its parts; false tells it to stop. A `total` of 0 is one that
    /// nobody knows.
    using Step = std::function<bool(int done, int total)>;
    /// Runs on the other thread; true when it was done whole.
    using Work = std::function<bool(const Step &step)>;

    enum class Stopping {
        /// run() returns when the work has ended: nothing of it goes on, and it may use what the
        /// caller owns.
        Waits,
        /// run() returns at once, and the work ends by itself at its next step: for parts that take
        /// long and only compute. The work owns everything that it uses.
        LeavesBehind
    };

    /// The window of `parent` alone is held up meanwhile; without a parent every window is.
    /// True when the work was done whole, false when it failed or the person stopped it.
    static bool run(QWidget *parent, const QString &title, const QString &text, const Work &work,
                    Stopping stopping = Stopping::Waits);
};
