#pragma once

#include <molvacore/boxcomprofile.h>
#include <molvacore/boxinfo.h>
#include <molvacore/onlinekkmprofile.h>
#include <molvacore/paymentcheckprofile.h>

#include <QFlags>
#include <QTemporaryDir>

/// A host database of its own for one test, filled like that of a box at work; the connectors made
/// while it lives use it.
///
/// Each part can be left out on construction. It removes its file and the process-wide session when
/// it goes.
class HostDatabase
{
public:
    enum Part {
        Box = 0x1,
        CommissionProfile = 0x2,
        ReceiptProfile = 0x4,
        RegisterProfile = 0x8,
        Cashier = 0x10,
        RegisterSettings = 0x20,
    };
    Q_DECLARE_FLAGS(Parts, Part)

    static constexpr qint64 boxId = 77;
    static constexpr int currencyNumber = 643;
    static constexpr qint64 cashierId = 5;

    explicit HostDatabase(Parts leftOut = Parts());
    ~HostDatabase();
    HostDatabase(const HostDatabase &) = delete;
    HostDatabase &operator=(const HostDatabase &) = delete;

    QString file() const;
    /// Type of CardReaderSettings and, when not empty, the outcome of every charge.
    void setCardTerminal(int type, const QString &outcome = QString());

    static BoxInfo box();
    static BoxComProfile commissionProfile();
    static PaymentCheckProfile receiptProfile();
    /// Agent sign "bank payment agent", all texts of agent and transfer operator filled in.
    static OnlineKkmProfile registerProfile();

private:
    QTemporaryDir m_dir;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(HostDatabase::Parts)
