#pragma once

#include <recovery/chargematcher.h>
#include <recovery/packrebuilder.h>
#include <recovery/paymentcase.h>

#include <payments/paymentrecord.h>

#include <QObject>
#include <QString>
#include <QVector>

#include <functional>
#include <optional>

class EmulatedRegister;
class PaysController;

/// Compares what the card terminal, the fiscal register, the payments store and billing each know,
/// and tells what became of every payment; carries out what a person decides about those that did
/// not come through.
///
/// Comparing repairs only what needs no decision: it writes down which charge went into which
/// receipt and pack, and that billing has a pack. Doing it again changes nothing more.
class PaymentReconciler final : public QObject
{
    Q_OBJECT

public:
    enum class Scope { Open, All };
    /// Told how far the work is; false ends it.
    using Progress = std::function<bool(int done, int total)>;
    /// Whether billing has a pack; nothing when it cannot be asked.
    using BillingKnows = std::function<std::optional<bool>(qint64 packId)>;

    /// All of it must be open and outlive the reconciler.
    struct Sources
    {
        ChargeJournal &charges;
        FiscalJournal &fiscal;
        PaymentsStore &payments;
        PaysController &controller;
        BillingKnows billing;
    };

    struct Report
    {
        /// Newest first; with Scope::Open only the open ones.
        QVector<PaymentCase> cases;
        int open = 0;
        int refunded = 0;
        int agreed = 0;
        /// False: ended before everything was compared.
        bool complete = true;
        /// Russian; not empty when a source could not be read.
        QString error;
    };

    PaymentReconciler(const Sources &sources, const PackRebuilder &rebuilder,
                      QObject *parent = nullptr);
    ~PaymentReconciler() override;

    /// Links charges to receipts and packs as these come.
    void follow(EmulatedRegister &fiscalRegister);

    Report reconcile(Scope scope, const Progress &progress = {});

    /// A payment of a report as it is now.
    PaymentCase again(const PaymentCase &payment);

    /// The ways out; false with a Russian text. Each may be repeated.
    bool saveByReceipt(const PaymentCase &payment, QString *error);
    bool post(const PaymentCase &payment, QString *error);
    bool refund(const PaymentCase &payment, QString *error);

private:
    void readReceipts(Scope scope, const Progress &progress, Report *report);
    void readOtherPacks(Scope scope, Report *report);
    void readCharges(Scope scope, Report *report);
    void add(Scope scope, const PaymentCase &payment, Report *report);

    PaymentCase caseOf(const ReceiptHead &receipt);
    PaymentCase caseOf(const PaymentRecord &pack, const std::optional<ReceiptHead> &receipt);
    PaymentCase caseOf(const ChargeRecord &charge) const;
    /// The state after billing was asked.
    PackState settled(const PaymentRecord &pack, bool *lost);
    QString repetitionOf(const ReceiptHead &receipt);

    Sources m_sources;
    PackRebuilder m_rebuilder;
    ChargeMatcher m_matcher;
};
