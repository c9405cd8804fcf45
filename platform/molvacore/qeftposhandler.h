#pragma once

#include <molvacore/poshandler.h>

#include <memory>

class PosEmulator;

/// A card terminal of type 3, driven by its protocol. Here it is an emulator: see PosTestAmount for
/// what it does.
class MOLVACORE_EXPORT QEftPosHandler final : public PosHandler
{
    Q_OBJECT

public:
    explicit QEftPosHandler(QObject *parent = nullptr);
    ~QEftPosHandler() override;

    bool init(QString &error) override;
    bool pay(const basix::FixNumber &amount, QString &error, QStringList &slip) override;

private:
    std::shared_ptr<PosEmulator> m_emulator;
};
