#include <molvacore/ingericolibhandler.h>

#include <molvacore/posemulator.h>

IngericoLibHandler::IngericoLibHandler(QObject *parent)
    : PosHandler(parent),
      m_emulator(std::make_unique<PosEmulator>(QStringLiteral("КАРТОЧНЫЙ ТЕРМИНАЛ, ТИП 1"),
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
    return m_emulator->pay(amount, error, slip);
}
