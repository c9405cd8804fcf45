#pragma once

#include <molvacore/ipayscontrollerwrapper.h>

#include <QPointer>

class PaysController;

/// What a plugin is given and owns: a thin handle on the terminal's controller, which outlives it
/// or is gone (then everything is refused).
class PaysControllerWrapper final : public IPaysControllerWrapper
{
public:
    explicit PaysControllerWrapper(PaysController *controller);
    ~PaysControllerWrapper() override;

    bool savePack(const PayPack &pack, bool complete) override;
    bool handOnAtOnce() const override;
    bool handOn(qint64 packId, QVariantMap &message, QString &error) override;

private:
    QPointer<PaysController> m_controller;
};
