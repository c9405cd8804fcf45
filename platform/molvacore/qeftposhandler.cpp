#include <molvacore/qeftposhandler.h>

#include <molvacore/posemulator.h>

QEftPosHandler::QEftPosHandler(QObject *parent)
    : PosHandler(parent),
      m_emulator(std::make_shared<PosEmulator>(QStringLiteral("КАРТОЧНЫЙ ТЕРМИНАЛ, ТИП 3"),
                                               QStringLiteral("00000003")))
{
}

QEftPosHandler::~QEftPosHandler() = default;

bool QEftPosHandler::init(QString &error)
{
    return m_emulator->init(error);
}

bool QEftPosHandler::pay(const basix::FixNumber &amount, QString &error, QStringList &slip)
{
    // A slow terminal keeps the events going, and whoever owns this may be destroyed by one of
    // them.
    const std::shared_ptr<PosEmulator> emulator = m_emulator;
    return emulator->pay(amount, error, slip);
}
