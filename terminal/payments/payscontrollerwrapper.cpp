#include <payments/payscontrollerwrapper.h>

#include <payments/payscontroller.h>

PaysControllerWrapper::PaysControllerWrapper(PaysController *controller) : m_controller(controller)
{
}

PaysControllerWrapper::~PaysControllerWrapper() = default;

bool PaysControllerWrapper::savePack(const PayPack &pack, bool complete)
{
    return m_controller && m_controller->savePack(pack, complete);
}

bool PaysControllerWrapper::handOnAtOnce() const
{
    return m_controller && m_controller->handOnAtOnce();
}

bool PaysControllerWrapper::handOn(qint64 packId, QVariantMap &message, QString &error)
{
    if (m_controller)
        return m_controller->handOn(packId, message, error);
    error = QStringLiteral("Журнал платежей закрыт. Перезапустите программу, платёж не потерян.");
    return false;
}
