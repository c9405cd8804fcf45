#include <molvacore/ingericolibhandler.h>

#include <molvacore/posemulator.h>

IngericoLibHandler::IngericoLibHandler(QObject *parent)
    : PosHandler(parent),
      m_emulator(std::make_shared<PosEmulator>(QStringLiteral("КАРТОЧНЫЙ ТЕРМИНАЛ, ТИП 1"),
                                               QStringLiteral("00000001")))
{
}

IngericoLibHandler::~IngericoLibHandler() = default;

bool IngericoLibHandler::init(QString &error)
{
    return m_emulator->init(error);
}

bool IngericoLibHandler::pay(const basix::FixNumber &amount, QString &error, QStringList &slip)
{
    // A slow terminal keeps the events going, and whoever owns this may be destroyed by one of
    // them.
    const std::shared_ptr<PosEmulator> emulator = m_emulator;
    return emulator->pay(amount, error, slip);
}
