#pragma once

#include "../billing/seededbilling.h"
#include "../fiscal/receipts.h"

#include <billing/billingendpoint.h>
#include <billing/billingservice.h>
#include <bus/inprocessbus.h>
#include <fiscal/emulatedregister.h>
#include <fiscal/fiscaljournal.h>
#include <hostdata/hostdataseeder.h>
#include <payments/chargejournal.h>
#include <payments/paymentsstore.h>
#include <payments/payscontroller.h>
#include <recovery/paymentreconciler.h>

#include <molvacore/payment.h>
#include <molvacore/paypack.h>

#include <QTemporaryDir>

#include <memory>

/// The four sources of a workstation in one folder, with billing behind a bus, for tests that bring
/// them out of step.
struct Workplace
{
    Workplace()
    {
        const QString billingFile = file("billing.sqlite");
        ready = fiscal.open(file("fiscal.sqlite")) && payments.open(file("payments.sqlite"))
            && charges.open(file("charges.sqlite")) && copySeededBilling(billingFile)
            && billing.open(billingFile);
        BillingEndpoint::attach(bus, service);
        controller = std::make_unique<PaysController>(payments, 4107);
        controller->follow(bus);
        fiscalRegister = std::make_unique<EmulatedRegister>(fiscal, [this] { return now; });
        makeReconciler();
    }

    void makeReconciler()
    {
        const auto knows = [this](qint64 packId) -> std::optional<bool> {
            if (!billingAnswers)
                return std::nullopt;
            return billing.hasPack(QString::number(packId));
        };
        reconciler = std::make_unique<PaymentReconciler>(
            PaymentReconciler::Sources{charges, fiscal, payments, *controller, knows},
            PackRebuilder(providers(), rouble()));
    }

    QString file(const char *name) const { return folder.filePath(QLatin1String(name)); }

    static basix::Currency rouble()
    {
        return basix::Currency(643, QStringLiteral("RUB"), QStringLiteral("Российский рубль"));
    }
    static QVector<Provider> providers()
    {
        const auto make = [](qint64 id, const QStringList &parameters) {
            Provider provider;
            provider.setId(id);
            provider.setWorkProviderId(id);
            provider.setCheckName(QStringLiteral("Водоканал %1").arg(id));
            for (const QString &name : parameters)
                provider.addParameter({name, name});
            return provider;
        };
        return {make(HostDataSeeder::PROVIDER_INDIVIDUAL,
                     {QStringLiteral("account"), QStringLiteral("period"),
                      QStringLiteral("paydata"), QStringLiteral("qrcode")}),
                make(HostDataSeeder::PROVIDER_LEGAL,
                     {QStringLiteral("account"), QStringLiteral("numdoc"),
                      QStringLiteral("paydata"), QStringLiteral("qrcode")})};
    }

    qint64 charge(qint64 kopecks, bool answered = true)
    {
        CardCharge made;
        made.time = now;
        made.amount = basix::FixNumber(100, kopecks);
        made.terminal = QStringLiteral("00000002");
        made.rrn = QString::number(100000000000 + next++);
        made.authCode = QStringLiteral("123456");
        made.answered = answered;
        charges.note(made);
        return charges.charges(0, 1).constFirst().id;
    }

    /// The number of the fiscal document, 0 when the register refused.
    qint64 print(qint64 cash, qint64 card, const QString &account = SampleNumber::ORDINARY)
    {
        QVariantMap document = Receipts::withLines(
            {Receipts::agentLine(QStringLiteral("Холодное водоснабжение"), cash + card)}, cash,
            card);
        document.insert(QStringLiteral("printable"),
                        QStringList{QStringLiteral("Лицевой счет\t%1").arg(account)});
        return print(document, account);
    }
    qint64 print(const QVariantMap &document, const QString &account)
    {
        QString error;
        const QString number = QString::number(1700000000 + next++) + account;
        if (!fiscalRegister->doReceipt(document, number, printed, error))
            return 0;
        return printed.value(QStringLiteral("data")).toMap().value(FiscalData::NUMBER).toLongLong();
    }

    /// Saves the pack of the receipt printed last.
    qint64 save(qint64 cash, qint64 card)
    {
        Payment payment;
        payment.setCreated(now);
        payment.setProviderData(providers().constFirst(), true);
        payment.setAccount(SampleNumber::ORDINARY);
        payment.setCurrencyId(643);
        payment.setSumm(basix::FixNumber(100, cash + card));
        PayPack pack;
        pack.addPayment(payment);
        if (card > 0)
            pack.addCardOperations(basix::FixNumber(100, card), rouble(), QString());
        if (cash > 0)
            pack.addCashOperations(basix::FixNumber(100, cash), rouble());
        pack.setFiscProps(printed.value(QStringLiteral("fiscprops")).toList());
        pack.setFiscData(printed.value(QStringLiteral("data")).toMap());
        pack.setFiscDocument(printed.value(QStringLiteral("document")).toMap());
        return controller->savePack(pack, true) ? pack.id() : 0;
    }

    QVector<PaymentCase> open()
    {
        return reconciler->reconcile(PaymentReconciler::Scope::Open).cases;
    }

    QTemporaryDir folder;
    bool ready = false;
    bool billingAnswers = true;
    QDateTime now{QDate(2026, 11, 21), QTime(10, 0)};
    qint64 next = 0;
    QVariantMap printed;
    FiscalJournal fiscal;
    PaymentsStore payments;
    ChargeJournal charges;
    BillingDatabase billing;
    BillingService service{billing};
    InProcessBus bus;
    std::unique_ptr<PaysController> controller;
    std::unique_ptr<EmulatedRegister> fiscalRegister;
    std::unique_ptr<PaymentReconciler> reconciler;
};
