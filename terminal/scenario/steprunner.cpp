#include "steprunner.h"

#include <QApplication>
#include <QDialog>
#include <QMessageBox>

namespace {

constexpr int lookInterval = 10;      // ms
constexpr int returnDeadline = 10000; // ms for the last action's dialog to close

} // namespace

StepRunner::StepRunner(int pause, QObject *parent) : QObject(parent), m_pause(pause)
{
    m_timer.setInterval(lookInterval);
    connect(&m_timer, &QTimer::timeout, this, &StepRunner::look);
}

void StepRunner::add(const Step &step)
{
    m_steps.enqueue(step);
}

void StepRunner::start()
{
    m_waiting.start();
    m_sinceStep.start();
    m_timer.start();
    lookWhenIdle();
}

void StepRunner::fail(const QString &reason)
{
    if (!m_failure.isEmpty())
        return;
    m_failure = reason.isEmpty() ? tr("причина не названа") : reason;
    m_steps.clear();
    m_timer.start();
}

void StepRunner::lookWhenIdle()
{
    // Windows that were just shown are painted first.
    QTimer::singleShot(0, this, &StepRunner::look);
}

void StepRunner::look()
{
    if (failed()) {
        closeFront();
        return;
    }
    if (m_queued || (m_pause > 0 && m_sinceStep.elapsed() < m_pause))
        return;
    if (m_steps.isEmpty()) {
        if (m_acting == 0)
            finish();
        else if (m_waiting.elapsed() > returnDeadline)
            fail(tr("Диалог не закрылся. %1").arg(describeScreen()));
        return;
    }
    const Step &step = m_steps.head();
    if (!step.expectsMessage && qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
        fail(tr("Перед шагом «%1» появилось сообщение. %2").arg(step.title, describeScreen()));
        return;
    }
    if (!step.ready || step.ready()) {
        // Qt never enters a timer's slot twice, so an action that opens a modal dialog must not run
        // inside this one.
        m_queued = true;
        QMetaObject::invokeMethod(this, &StepRunner::runNext, Qt::QueuedConnection);
        return;
    }
    if (m_waiting.elapsed() > step.deadline + m_pause) {
        fail(tr("Шаг «%1» не дождался своего за %2 мс. %3")
                 .arg(step.title, QString::number(step.deadline), describeScreen()));
    }
}

void StepRunner::closeFront()
{
    // One window per look: each of them ends an event loop that must return before the next one
    // can.
    QWidget *modal = QApplication::activeModalWidget();
    if (auto *dialog = qobject_cast<QDialog *>(modal))
        dialog->done(QDialog::Rejected);
    else if (modal)
        modal->close();
    else if (m_acting == 0)
        finish();
}

void StepRunner::runNext()
{
    m_queued = false;
    if (failed() || m_steps.isEmpty())
        return;
    const Step step = m_steps.dequeue();
    m_waiting.restart();
    m_sinceStep.restart();
    if (!step.title.isEmpty())
        emit stepStarted(step.title);
    if (step.act) {
        ++m_acting;
        step.act();
        --m_acting;
        m_waiting.restart();
    }
    if (m_steps.isEmpty())
        lookWhenIdle();
}

void StepRunner::finish()
{
    m_timer.stop();
    if (m_finished)
        return;
    m_finished = true;
    emit finished();
}

QString StepRunner::describeScreen()
{
    const QWidget *modal = QApplication::activeModalWidget();
    if (!modal)
        return tr("Открытых диалогов нет.");
    const auto *box = qobject_cast<const QMessageBox *>(modal);
    const QString text = box ? box->text() : modal->objectName();
    return tr("На экране «%1»: %2").arg(modal->windowTitle(), text);
}
