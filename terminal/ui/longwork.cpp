#include "longwork.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QLabel>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QSemaphore>
#include <QThreadPool>
#include <QTimer>

#include <atomic>
#include <memory>

namespace {

constexpr int QUIET_MS = 500;
constexpr int LOOK_MS = 50;

/// What both threads hold: a work that was left behind outlives the call that began it.
struct Shared
{
    std::atomic_bool stopped{false};
    std::atomic_bool whole{false};
    std::atomic_int done{0};
    std::atomic_int total{0};
    QSemaphore ended;
};

QString shown(const char *text)
{
    return QCoreApplication::translate("LongWork", text);
}

/// True when the work has ended, false when it was left behind.
bool wait(QWidget *parent, const QString &title, const QString &text, Shared &shared,
          LongWork::Stopping stopping)
{
    QProgressDialog dialog(parent ? parent->window() : nullptr);
    dialog.setObjectName(QStringLiteral("LongWork"));
    dialog.setWindowTitle(title);
    dialog.setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);
    // The text may name a file, and a file may be named like markup.
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    dialog.setLabel(label); // takes it over, as it does the bar
    // A button of our own would bring a second shortcut for Esc, and neither would act.
    dialog.setCancelButtonText(shown("Прервать"));
    auto *stop = dialog.findChild<QPushButton *>();
    auto *bar = new QProgressBar;
    bar->setRange(0, 0);
    dialog.setBar(bar);
    QEventLoop loop;
    bool ended = false;
    const auto stopWork = [&] {
        shared.stopped = true;
        if (stopping == LongWork::Stopping::LeavesBehind) {
            loop.quit();
            return;
        }
        stop->setEnabled(false);
        label->setText(shown("Прерывается…"));
        dialog.show();
    };
    QObject::connect(&dialog, &QProgressDialog::canceled, &loop, stopWork);
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        ended = shared.ended.tryAcquire();
        if (ended)
            loop.quit();
        else if (shared.stopped && stopping == LongWork::Stopping::Waits && dialog.isHidden())
            dialog.show(); // closed by its frame, which hides it after the signal
        bar->setRange(0, shared.total);
        bar->setValue(shared.done);
    });
    look.start(LOOK_MS);
    dialog.show();
    loop.exec();
    // The loop also ends when the program does.
    shared.stopped = true;
    if (!ended && stopping == LongWork::Stopping::Waits) {
        shared.ended.acquire();
        ended = true;
    }
    return ended;
}

} // namespace

bool LongWork::run(QWidget *parent, const QString &title, const QString &text, const Work &work,
                   Stopping stopping)
{
    const auto shared = std::make_shared<Shared>();
    QThreadPool::globalInstance()->start([shared, work] {
        shared->whole = work([&shared](int done, int total) {
            shared->done = done;
            shared->total = total;
            return !shared->stopped;
        });
        shared->ended.release();
    });
    const bool ended =
        shared->ended.tryAcquire(1, QUIET_MS) || wait(parent, title, text, *shared, stopping);
    return ended && shared->whole;
}
