#include "modalanswers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace {

constexpr int lookEveryMs = 5;
constexpr int watchdogMs = 3000;

ModalAnswers::Seen describe(QDialog *dialog)
{
    ModalAnswers::Seen seen;
    seen.className = QString::fromLatin1(dialog->metaObject()->className());
    seen.title = dialog->windowTitle();
    seen.enabled = dialog->isEnabled();
    if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
        seen.text = box->text();
        seen.icon = box->icon();
        for (const QAbstractButton *button : box->buttons())
            seen.buttons.append(button->text());
    } else if (auto *input = qobject_cast<QInputDialog *>(dialog)) {
        seen.text = input->labelText();
    }
    return seen;
}

} // namespace

ModalAnswers::ModalAnswers(QObject *parent) : QObject(parent)
{
    m_timer.setInterval(lookEveryMs);
    connect(&m_timer, &QTimer::timeout, this, &ModalAnswers::look);
    m_timer.start();
}

ModalAnswers::~ModalAnswers() = default;

ModalAnswers &ModalAnswers::ok()
{
    return run([](QDialog *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        if (box && box->button(QMessageBox::Ok))
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
    });
}

ModalAnswers &ModalAnswers::enter(const QString &text)
{
    return run([text](QDialog *dialog) {
        auto *field = dialog->findChild<QLineEdit *>();
        if (!field)
            return;
        field->setFocus();
        field->selectAll();
        for (const QChar c : text)
            QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, QString(c), Qt::NoModifier);
        QTest::keyClick(field, Qt::Key_Return);
    });
}

ModalAnswers &ModalAnswers::escape()
{
    return run([](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
}

ModalAnswers &ModalAnswers::run(const std::function<void(QDialog *)> &step)
{
    m_steps.enqueue(step);
    return *this;
}

void ModalAnswers::look()
{
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    // A wizard under test is itself a modal dialog when the host executes it; it is driven by the
    // test, not answered.
    if (!dialog || !dialog->isVisible() || dialog->inherits("QWizard"))
        return;
    // A key pressed before a dialog has become active would reach nobody.
    if (!dialog->isActiveWindow())
        return;
    if (dialog == m_answered) {
        if (m_since.elapsed() > watchdogMs) {
            m_problems.append(QStringLiteral("did not close: ") + dialog->windowTitle());
            m_answered.clear();
            dialog->reject();
        }
        return;
    }
    m_answered = dialog;
    m_since.start();
    m_seen.append(describe(dialog));
    if (m_steps.isEmpty()) {
        m_problems.append(
            QStringLiteral("not planned: %1 | %2").arg(m_seen.last().title, m_seen.last().text));
        dialog->reject();
        return;
    }
    const auto step = m_steps.dequeue();
    step(dialog);
}
