#include "shownreason.h"

#include <QMessageBox>
#include <QPointer>

void showWarning(QWidget *parent, const QString &title, const QString &text)
{
    // Not on the stack: whoever destroys the parent while the box is open destroys the box as well.
    const QPointer<QMessageBox> box =
        new QMessageBox(QMessageBox::Warning, title, shownReason(text), QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->exec();
    delete box.data();
}
