#include "gooddialog.h"
#include "goodplugin.h"

#include <basixcore/currency.h>
#include <molvacore/boxinfo.h>
#include <molvacore/frhandler.h>
#include <molvacore/provider.h>

#include <QStringList>
#include <QVariant>

bool GoodPlugin::providerIsSupported(const Provider &provider) const
{
    return providerIsSupported(provider.id());
}

void GoodPlugin::setInputFont(const QFont &font)
{
    note(QStringLiteral("font %1").arg(font.pixelSize()));
}

bool GoodPlugin::setMessageReciever(QObject *object, const char *member)
{
    m_receiver = object;
    m_receiverMember = member;
    note(QStringLiteral("receiver ") + QString::fromLatin1(member + 1));
    return true;
}

bool GoodPlugin::setMessageSender(QObject *object, const char *member)
{
    m_sender = object;
    m_senderMember = member;
    note(QStringLiteral("sender ") + QString::fromLatin1(member + 1));
    return true;
}

bool GoodPlugin::setPayStatusReciever(QObject *, const char *member)
{
    note(QStringLiteral("status ") + QString::fromLatin1(member + 1));
    return true;
}

IPayDialog *GoodPlugin::start(const basix::FixNumber &, const Provider &provider, QWidget *parent)
{
    if (!providerIsSupported(provider))
        return nullptr;
    auto *dialog = new GoodDialog(provider.id(), parent);
    dialog->setMessageReciever(m_receiver, m_receiverMember.constData());
    dialog->setMessageSender(m_sender, m_senderMember.constData());
    return dialog;
}

void GoodPlugin::setPaysControllerWrapper(IPaysControllerWrapper *wrapper)
{
    m_wrapper.reset(wrapper);
    note(QStringLiteral("wrapper"));
}

void GoodPlugin::setFrHandler(FrHandler *handler)
{
    handler->setParent(this);
    note(QStringLiteral("register"));
}

void GoodPlugin::startWorkers(const BoxInfo &box, const basix::Currency &currency)
{
    note(QStringLiteral("startWorkers %1 %2")
             .arg(QString::number(box.boxId()), QString::number(currency.number3())));
}

void GoodPlugin::note(const QString &call)
{
    setProperty("calls", property("calls").toStringList() << call);
}
