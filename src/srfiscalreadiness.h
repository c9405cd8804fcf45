#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <QString>

class FrHandler;
class OnlineKkmProfile;
class QObject;

/// Can a receipt be printed for this payment? Asked before the cashier takes any money.
class SrFiscalReadiness
{
    Q_DECLARE_TR_FUNCTIONS(SrFiscalReadiness)

public:
    /// Why no receipt could be printed now, for the cashier to read; empty when one can.
    ///
    /// Looks at the register first (there, alive, status readable, ready for receipts), then at the
    /// online cash-register profile. `parent` is the QObject parent of the host's profile manager
    /// while the check runs.
    static QString obstacle(const QPointer<FrHandler> &fiscalRegister, QObject *parent);

    /// The current online cash-register profile of the host's database; invalid when none is set
    /// up.
    static OnlineKkmProfile currentProfile(QObject *parent);
    /// The text for a profile that is not set up: it names the portal where the agent sets it up.
    static QString noProfileText();
    /// The text for a register that is missing or cannot print.
    static QString noRegisterText();
};
