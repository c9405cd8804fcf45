#include "gooddialog.h"

#include <QTimer>
#include <QVariantMap>

GoodDialog::GoodDialog(qint64 providerId, QWidget *parent)
    : QDialog(parent), m_providerId(providerId)
{
    setObjectName(QStringLiteral("GoodDialog"));
    connect(this, &GoodDialog::incomingMessage, this, &QDialog::accept);
}

bool GoodDialog::execute()
{
    QTimer::singleShot(0, this, [this] {
        emit sendMessage(QStringLiteral("/test/question"),
                         QVariantMap{{QStringLiteral("провайдер"), m_providerId}});
    });
    return exec() == QDialog::Accepted;
}

bool GoodDialog::setTemplatesConnection(QObject *, const char *)
{
    return true;
}

// The normalised form of a signature has no blanks.
// clang-format off
bool GoodDialog::setMessageReciever(QObject *object, const char *member)
{
    return object && connect(object, member, this, SIGNAL(incomingMessage(QVariantMap,QString)));
}

bool GoodDialog::setMessageSender(QObject *object, const char *member)
{
    return object && connect(this, SIGNAL(sendMessage(QString,QVariant)), object, member);
}

// clang-format on
bool GoodDialog::setPayStatusReciever(QObject *object, const char *member)
{
    return object && connect(object, member, this, SIGNAL(paymentStatus(QVariant)));
}
