#include "workplace.h"

#include <QtTest>

using State = PaymentCase::State;

class tst_PaymentReconciler : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_place = std::make_unique<Workplace>();
        QVERIFY(m_place->ready);
    }
    void cleanup() { m_place.reset(); }
    void nothingHappened();
    void tellsEveryStep();
    void chargedAndNotFiscalised();
    void chargeWithUnknownOutcome();
    void fiscalisedAndNotSaved();
    void warnsOfARepetition();
    void savedPackNotPosted();
    void acknowledgementThatWasLost();
    void billingThatForgot();
    void billingThatCannotBeAsked();
    void packWithoutItsReceipt();
    void packWithOtherMoney();
    void leftOutHundredthsAgree();
    void recoveredTwiceIsOnce();
    void pluginComesAfterTheRecovery();
    void recoveredReachesBilling();
    void refundIsRemembered();
    void followsTheRegister();
    void doesNotExplainAnotherPaymentsCharge();
    void canBeCancelled();
    void manyPagesAgree();

private:
    std::unique_ptr<Workplace> m_place;
};

void tst_PaymentReconciler::nothingHappened()
{
    const auto report = m_place->reconciler->reconcile(PaymentReconciler::Scope::All);
    QVERIFY(report.complete && report.error.isEmpty() && report.cases.isEmpty());
}

void tst_PaymentReconciler::tellsEveryStep()
{
    Workplace &place = *m_place;
    const auto only = [&place] {
        const auto report = place.reconciler->reconcile(PaymentReconciler::Scope::All);
        return report.cases.size() == 1 ? report.cases.constFirst().state : State::Disagrees;
    };
    place.charge(10000);
    QCOMPARE(only(), State::ChargedNotFiscalised);
    const qint64 receipt = place.print(5000, 10000);
    QCOMPARE(only(), State::FiscalisedNotSaved);
    const qint64 pack = place.save(5000, 10000);
    QVERIFY(pack > 0);
    QCOMPARE(only(), State::SavedNotPosted);
    QVERIFY(place.payments.advance(pack, PackState::HandedOn));
    QCOMPARE(only(), State::SavedNotPosted);
    QVERIFY(place.payments.advance(pack, PackState::Posted));
    QCOMPARE(only(), State::PostedNotAcknowledged);
    QVERIFY(place.controller->outbox().drain(place.bus) == 0);
    QVariantMap body = *place.payments.pack(pack);
    QCOMPARE(place.billing.takePack(body), BillingDatabase::Taking::Taken);
    QCOMPARE(only(), State::Agreed);
    QCOMPARE(place.payments.record(pack)->state, PackState::Acknowledged);
    const auto charge = place.charges.chargeOfReceipt(place.fiscal.storageNumber(), receipt);
    QVERIFY(charge);
    QCOMPARE(charge->packId, pack);
}

void tst_PaymentReconciler::chargedAndNotFiscalised()
{
    const qint64 id = m_place->charge(12300);
    const QVector<PaymentCase> open = m_place->open();
    QCOMPARE(open.size(), 1);
    QCOMPARE(open.at(0).chargeId, id);
    QCOMPARE(open.at(0).sum.value(), Q_INT64_C(12300));
    QVERIFY(open.at(0).canRefund() && !open.at(0).canPost() && !open.at(0).canSaveByReceipt());
    QVERIFY(open.at(0).story.contains(QStringLiteral("123.00")));
    QVERIFY(open.at(0).story.contains(QStringLiteral("RRN 100000000000")));
}

void tst_PaymentReconciler::chargeWithUnknownOutcome()
{
    m_place->charge(12300, false);
    QVERIFY(m_place->open().constFirst().story.contains(QStringLiteral("исход неизвестен")));
    // The cashier charged once more and went on: the receipt belongs to the charge that was seen.
    const qint64 seen = m_place->charge(12300);
    m_place->charge(12300, false);
    const qint64 receipt = m_place->print(0, 12300);
    QVERIFY(m_place->save(0, 12300) > 0);
    m_place->open();
    QCOMPARE(m_place->charges.chargeOfReceipt(m_place->fiscal.storageNumber(), receipt)->id, seen);
    QCOMPARE(m_place->charges.unexplained().size(), 2);
}

void tst_PaymentReconciler::fiscalisedAndNotSaved()
{
    m_place->fiscalRegister->setCondition(EmulatedRegister::Condition::FailsAfterPrinting, true);
    QCOMPARE(m_place->print(5000, 0), Q_INT64_C(0));
    const QVector<PaymentCase> open = m_place->open();
    QCOMPARE(open.size(), 1);
    QCOMPARE(open.at(0).state, State::FiscalisedNotSaved);
    QCOMPARE(open.at(0).account, SampleNumber::ORDINARY);
    QCOMPARE(open.at(0).sum.value(), Q_INT64_C(5000));
    QCOMPARE(open.at(0).fiscalDocument, Q_INT64_C(2));
    QVERIFY(open.at(0).canSaveByReceipt() && !open.at(0).canRefund());
    QVERIFY2(open.at(0).story.contains(QStringLiteral("не ответила")),
             qPrintable(open.at(0).story));
}

void tst_PaymentReconciler::warnsOfARepetition()
{
    const qint64 first = m_place->print(5000, 0);
    m_place->print(7000, 0);
    const qint64 again = m_place->print(5000, 0);
    QVERIFY(m_place->save(5000, 0) > 0);
    const QVector<PaymentCase> open = m_place->open();
    QCOMPARE(open.size(), 3); // two without a pack and one that is not posted
    for (const PaymentCase &payment : open) {
        QCOMPARE(payment.story.contains(QStringLiteral("пробит чек № ФД %1").arg(again)),
                 payment.fiscalDocument == first);
    }
}

void tst_PaymentReconciler::savedPackNotPosted()
{
    m_place->print(5000, 0);
    const qint64 pack = m_place->save(5000, 0);
    QVERIFY(m_place->payments.setLastError(pack, QStringLiteral("Нет связи")));
    const PaymentCase payment = m_place->open().value(0);
    QVERIFY(payment.canPost());
    QVERIFY(payment.story.contains(QStringLiteral("Нет связи")));
    m_place->controller->outbox().start(m_place->bus);
    QTRY_VERIFY(m_place->open().isEmpty());
    QCOMPARE(m_place->billing.packCount(), 1);
}

void tst_PaymentReconciler::acknowledgementThatWasLost()
{
    m_place->print(5000, 0);
    const qint64 pack = m_place->save(5000, 0);
    QCOMPARE(m_place->billing.takePack(*m_place->payments.pack(pack)),
             BillingDatabase::Taking::Taken);
    QVERIFY(m_place->open().isEmpty());
    QCOMPARE(m_place->payments.record(pack)->state, PackState::Acknowledged);
    QVERIFY(m_place->controller->unposted().isEmpty());
}

void tst_PaymentReconciler::billingThatForgot()
{
    m_place->print(5000, 0);
    const qint64 pack = m_place->save(5000, 0);
    QVERIFY(m_place->payments.advance(pack, PackState::Acknowledged));
    const PaymentCase payment = m_place->open().value(0);
    QCOMPARE(payment.state, State::Disagrees);
    QVERIFY(payment.canPost());
    m_place->controller->outbox().start(m_place->bus);
    QString error;
    QVERIFY2(m_place->reconciler->post(payment, &error), qPrintable(error));
    QTRY_COMPARE(m_place->billing.packCount(), 1);
    QVERIFY(m_place->open().isEmpty());
}

void tst_PaymentReconciler::billingThatCannotBeAsked()
{
    m_place->billingAnswers = false;
    m_place->print(5000, 0);
    const qint64 pack = m_place->save(5000, 0);
    QVERIFY(m_place->payments.advance(pack, PackState::Posted));
    QCOMPARE(m_place->open().value(0).state, State::PostedNotAcknowledged);
    QVERIFY(m_place->payments.advance(pack, PackState::Acknowledged));
    QVERIFY(m_place->open().isEmpty());
}

void tst_PaymentReconciler::packWithoutItsReceipt()
{
    m_place->print(5000, 0);
    QVariantMap data = m_place->printed.value(QStringLiteral("data")).toMap();
    data.insert(FiscalData::NUMBER, 77);
    m_place->printed.insert(QStringLiteral("data"), data);
    QVERIFY(m_place->save(5000, 0) > 0);
    const QVector<PaymentCase> open = m_place->open();
    QCOMPARE(open.size(), 2);
    const PaymentCase &odd = open.at(0).packId > 0 ? open.at(0) : open.at(1);
    QCOMPARE(odd.state, State::Disagrees);
    QVERIFY(odd.story.contains(QStringLiteral("№ ФД 77")));
}

void tst_PaymentReconciler::packWithOtherMoney()
{
    m_place->print(5000, 0);
    QVERIFY(m_place->save(4000, 1000) > 0);
    const PaymentCase payment = m_place->open().value(0);
    QCOMPARE(payment.state, State::Disagrees);
    QVERIFY2(payment.story.contains(QStringLiteral("40.00 р. и 10.00 р.")),
             qPrintable(payment.story));
}

void tst_PaymentReconciler::leftOutHundredthsAgree()
{
    m_place->print(5001, 0);
    QVERIFY(m_place->save(5000, 0) > 0);
    QCOMPARE(m_place->open().value(0).state, State::SavedNotPosted);
}

void tst_PaymentReconciler::recoveredTwiceIsOnce()
{
    m_place->charge(3000);
    m_place->print(2000, 3000);
    const PaymentCase payment = m_place->open().value(0);
    QString error;
    QVERIFY2(m_place->reconciler->saveByReceipt(payment, &error), qPrintable(error));
    QVERIFY2(m_place->reconciler->saveByReceipt(payment, &error), qPrintable(error));
    QCOMPARE(m_place->payments.count({}), 1);
    const PaymentRecord record = m_place->payments.records({}, 0, 1).constFirst();
    QVERIFY(record.recovered);
    QCOMPARE(record.account, SampleNumber::ORDINARY);
    QCOMPARE(record.cash.value(), Q_INT64_C(2000));
    QCOMPARE(record.card.value(), Q_INT64_C(3000));
    QCOMPARE(m_place->charges.charges(0, 1).constFirst().packId, record.packId);
    QCOMPARE(m_place->reconciler->again(payment).state, State::SavedNotPosted);
    QVERIFY(m_place->open().value(0).story.contains(QStringLiteral("восстановлен")));
}

void tst_PaymentReconciler::pluginComesAfterTheRecovery()
{
    m_place->print(2000, 0);
    QString error;
    QVERIFY(m_place->reconciler->saveByReceipt(m_place->open().value(0), &error));
    // The same payment is stored; a foreign one over the same receipt is not.
    QVERIFY(m_place->save(2000, 0) > 0);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("not saved")));
    QCOMPARE(m_place->save(1000, 1000), Q_INT64_C(0));
    QVERIFY(m_place->controller->lastError().contains(QStringLiteral("уже принадлежит")));
    QCOMPARE(m_place->payments.count({}), 1);
}

void tst_PaymentReconciler::recoveredReachesBilling()
{
    m_place->print(2000, 0);
    QString error;
    QVERIFY(m_place->reconciler->saveByReceipt(m_place->open().value(0), &error));
    m_place->controller->drain(m_place->bus);
    QTRY_VERIFY(m_place->open().isEmpty());
    const QString pack = QString::number(m_place->payments.records({}, 0, 1).constFirst().packId);
    const QVector<TakenPayment> taken = m_place->billing.takenPayments(pack);
    QCOMPARE(taken.size(), 1);
    QCOMPARE(taken.at(0).sum, Q_INT64_C(2000));
    QVERIFY(taken.at(0).allocated);
    QCOMPARE(
        m_place->billing.account(SampleAccount::Payer::Individual, SampleNumber::ORDINARY)->debt,
        Q_INT64_C(150050 - 2000));
}

void tst_PaymentReconciler::refundIsRemembered()
{
    m_place->charge(3000);
    const PaymentCase payment = m_place->open().value(0);
    QString error;
    QVERIFY(m_place->reconciler->refund(payment, &error));
    QVERIFY(m_place->reconciler->refund(payment, &error));
    QCOMPARE(m_place->charges.refundedTotal(), Q_INT64_C(3000));
    const auto report = m_place->reconciler->reconcile(PaymentReconciler::Scope::All);
    QCOMPARE(report.open, 0);
    QCOMPARE(report.refunded, 1);
    // A receipt that comes afterwards is not paid by money that went back.
    m_place->print(0, 3000);
    QVERIFY(!m_place->charges.chargeOfReceipt(m_place->fiscal.storageNumber(), 2));
}

void tst_PaymentReconciler::followsTheRegister()
{
    m_place->reconciler->follow(*m_place->fiscalRegister);
    const qint64 id = m_place->charge(3000);
    m_place->print(0, 3000);
    QCOMPARE(m_place->charges.charge(id)->fiscalDocument, Q_INT64_C(2));
    const qint64 pack = m_place->save(0, 3000);
    QCOMPARE(m_place->charges.charge(id)->packId, pack);
}

void tst_PaymentReconciler::doesNotExplainAnotherPaymentsCharge()
{
    const QDateTime noon = m_place->now;
    m_place->charge(3000);
    m_place->now = noon.addDays(2);
    m_place->print(0, 3000); // long after
    m_place->now = noon.addSecs(-3600);
    m_place->print(0, 3000); // long before
    m_place->now = noon.addSecs(60);
    m_place->print(3000, 0); // in cash
    m_place->print(0, 2999);
    m_place->open();
    QCOMPARE(m_place->charges.unexplained().size(), 1);
}

void tst_PaymentReconciler::canBeCancelled()
{
    m_place->print(2000, 0);
    const auto report = m_place->reconciler->reconcile(PaymentReconciler::Scope::Open,
                                                       [](int, int) { return false; });
    QVERIFY(!report.complete);
    QVERIFY(report.cases.isEmpty());
}

void tst_PaymentReconciler::manyPagesAgree()
{
    constexpr int count = 230;
    for (int i = 0; i < count; ++i) {
        QVERIFY(m_place->print(1000 + i, 0) > 0);
        if (i % 20 != 7)
            QVERIFY(m_place->save(1000 + i, 0) > 0);
    }
    int calls = 0;
    const auto report = m_place->reconciler->reconcile(PaymentReconciler::Scope::Open,
                                                       [&calls](int done, int total) {
                                                           ++calls;
                                                           return done <= total;
                                                       });
    QVERIFY(calls >= 4);
    QCOMPARE(report.open, count);
    const auto lost =
        std::count_if(report.cases.cbegin(), report.cases.cend(),
                      [](const auto &each) { return each.state == State::FiscalisedNotSaved; });
    QCOMPARE(int(lost), 12);
}

QTEST_GUILESS_MAIN(tst_PaymentReconciler)
#include "tst_paymentreconciler.moc"
