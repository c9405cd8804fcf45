#pragma once

#include <molvacore/poshandler.h>

#include <memory>

class PosEmulator;

/// A card terminal of type 1, driven through a library of its maker. Here it is an emulator: see
/// PosTestAmount for what it does.
class MOLVACORE_EXPORT IngericoLibHandler final : public PosHandler
{
    Q_OBJECT

public:
    explicit IngericoLibHandler(QObject *parent = nullptr);
    ~IngericoLibHandler() override;

    bool init(QString &error) override;
    bool pay(const basix::FixNumber &amount, QString &error, QStringList &slip) override;

private:
    std::shared_ptr<PosEmulator> m_emulator;
};
