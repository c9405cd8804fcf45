#pragma once

#include <molvacore/poshandler.h>

#include <memory>

class PosEmulator;

/// A card terminal of type 2, driven through a library of the bank. Here it is an emulator: see
/// PosTestAmount for what it does.
class MOLVACORE_EXPORT SberPosLibHandler final : public PosHandler
{
    Q_OBJECT

public:
    explicit SberPosLibHandler(QObject *parent = nullptr);
    ~SberPosLibHandler() override;

    bool init(QString &error) override;
    bool pay(const basix::FixNumber &amount, QString &error, QStringList &slip) override;

private:
    std::shared_ptr<PosEmulator> m_emulator;
};
