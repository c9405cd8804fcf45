#include "fakepayscontroller.h"

FakePaysController::FakePaysController(const QSharedPointer<Record> &record) : m_record(record)
{
    ++m_record->alive;
}

FakePaysController::~FakePaysController()
{
    --m_record->alive;
}

bool FakePaysController::savePack(const PayPack &pack, bool complete)
{
    m_record->packs.append(pack);
    m_record->complete.append(complete);
    if (m_record->whileSaving)
        m_record->whileSaving();
    return m_record->saves;
}

bool FakePaysController::handOnAtOnce() const
{
    return m_record->atOnce;
}

bool FakePaysController::handOn(qint64 packId, QVariantMap &message, QString &error)
{
    m_record->handedOn.append(packId);
    m_record->taken.append(message);
    if (m_record->whileHandingOn)
        m_record->whileHandingOn();
    if (m_record->handsOn)
        message = m_record->message;
    else
        error = m_record->handOnError;
    return m_record->handsOn;
}
