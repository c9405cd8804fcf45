#pragma once

#include <scenario/demorun.h>

/// A payment of a private person: the bill's code is scanned, the debt spread over the services,
/// meter readings entered.
class IndividualDemo final : public DemoRun
{
    Q_OBJECT

public:
    using DemoRun::DemoRun;

protected:
    qint64 providerId() const override;
    QString title() const override;
    QString obstacle() override;
    void planAccount() override;

private:
    QString billCode();
    bool enterReadings();
};
