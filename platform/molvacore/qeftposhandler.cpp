#include <molvacore/qeftposhandler.h>

#include <molvacore/posemulator.h>

QEftPosHandler::QEftPosHandler(QObject *parent)
    : PosHandler(parent),
      m_emulator(std::make_unique<PosEmulator>(QStringLiteral("КАРТОЧНЫЙ ТЕРМИНАЛ, ТИП 3"),
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
    return m_emulator->pay(amount, error, slip);
}
