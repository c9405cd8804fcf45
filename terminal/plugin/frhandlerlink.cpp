#include "frhandlerlink.h"

FrHandlerLink::FrHandlerLink(FrHandler &target) : m_target(&target) {}

FrHandlerLink::~FrHandlerLink() = default;

bool FrHandlerLink::getFiscalStatus(QSharedPointer<FsStatus> &status)
{
    return m_target && m_target->getFiscalStatus(status);
}

bool FrHandlerLink::doReceipt(const QVariantMap &document, const QString &documentNumber,
                              QVariantMap &result, QString &error)
{
    if (!m_target) {
        error = QStringLiteral(
            "Чек не напечатан: касса отключена от рабочего места. Подключите кассу и повторите.");
        return false;
    }
    return m_target->doReceipt(document, documentNumber, result, error);
}
