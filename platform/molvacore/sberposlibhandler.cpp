#include <molvacore/sberposlibhandler.h>

#include <molvacore/posemulator.h>

SberPosLibHandler::SberPosLibHandler(QObject *parent)
    : PosHandler(parent),
      m_emulator(std::make_unique<PosEmulator>(QStringLiteral("КАРТОЧНЫЙ ТЕРМИНАЛ, ТИП 2"),
                                               QStringLiteral("00000002")))
{
}

SberPosLibHandler::~SberPosLibHandler() = default;

bool SberPosLibHandler::init(QString &error)
{
    return m_emulator->init(error);
}

bool SberPosLibHandler::pay(const basix::FixNumber &amount, QString &error, QStringList &slip)
{
    return m_emulator->pay(amount, error, slip);
}
