#pragma once

#include <scenario/demorun.h>

/// A payment of a legal entity: one document is scanned, then the whole contract asked for and two
/// documents ticked.
class LegalDemo final : public DemoRun
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
    bool askWholeContract();
    bool tickDocuments();
};
