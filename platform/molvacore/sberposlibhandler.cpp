#include <molvacore/sberposlibhandler.h>

#include <molvacore/posemulator.h>

SberPosLibHandler::SberPosLibHandler(QObject *parent)
    : PosHandler(parent),
      m_emulator(std::make_shared<PosEmulator>(QStringLiteral("КАРТОЧНЫЙ ТЕРМИНАЛ, ТИП 2"),
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
    // A slow terminal keeps the events going, and whoever owns this may be destroyed by one of
    // them.
    const std::shared_ptr<PosEmulator> emulator = m_emulator;
    return emulator->pay(amount, error, slip);
}
