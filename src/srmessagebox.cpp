#include "srmessagebox.h"

#include "srshowntext.h"

#include <QMessageBox>
#include <QPointer>

namespace {

void showBox(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text)
{
    // Not on the stack: whoever destroys the parent while the box is open destroys the box as well.
    const QPointer<QMessageBox> box =
        new QMessageBox(icon, title, SrShownText::message(text), QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->exec();
    delete box.data();
}

} // namespace

void SrMessageBox::show(QWidget *parent, const QString &checkName, ISrIWizardPage::MsgType type,
                        const QString &text)
{
    if (type == ISrIWizardPage::MsgError)
        // The trailing blank separates the word from the name.
        showBox(parent, QMessageBox::Critical, tr("Ошибка ") + checkName, text);
    else if (type == ISrIWizardPage::MsgWarning)
        showBox(parent, QMessageBox::Warning, checkName, text);
    else
        showBox(parent, QMessageBox::Information, checkName, text);
}

void SrMessageBox::showError(QWidget *parent, const QString &title, const QString &text)
{
    showBox(parent, QMessageBox::Critical, title, text);
}
