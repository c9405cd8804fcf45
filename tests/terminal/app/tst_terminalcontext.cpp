#include <app/terminalcontext.h>

#include <hostdata/hostdataseeder.h>
#include <molvacore/appsession.h>
#include <molvacore/payment.h>
#include <molvacore/paypack.h>
#include <molvacore/providerparameter.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

namespace {

std::unique_ptr<TerminalContext> opened(const QTemporaryDir &folder)
{
    QString error;
    auto context = TerminalContext::open(folder.path(), &error);
    if (!context)
        qWarning("%s", qPrintable(error));
    return context;
}

/// A pack that pays 12.50 in cash into the ordinary sample account.
PayPack somePack(const TerminalContext &context)
{
    Payment payment;
    payment.setProviderData(context.providers().constFirst(), true);
    payment.setAccount(SampleNumber::ORDINARY);
    payment.setCurrencyId(643);
    payment.setSumm(basix::FixNumber(100, 1250));
    PayPack pack;
    pack.addPayment(payment);
    pack.addCashOperations(payment.summ(), context.box().currency());
    return pack;
}

} // namespace

class TestTerminalContext : public QObject
{
    Q_OBJECT

private slots:
    void storesAreNamed()
    {
        QTemporaryDir folder;
        QVERIFY(opened(folder));
        QStringList expected;
        const QDir data(folder.path());
        for (const QString &file : data.entryList({QStringLiteral("*.sqlite")})) {
            // The host's own does not grow with the payments.
            if (file != QLatin1String("host.sqlite"))
                expected.append(data.absoluteFilePath(file));
        }
        QStringList stores = TerminalContext::storeFiles(folder.path());
        stores.sort();
        QCOMPARE(stores, expected);
    }

    void newFolderIsFilledWithAWorkstation()
    {
        QTemporaryDir folder;
        const auto context = opened(folder);
        QVERIFY(context);
        QVERIFY(context->box().isValid());
        QVERIFY(!context->cashier().isEmpty());
        QList<qint64> ids;
        for (const Provider &provider : context->providers())
            ids.append(provider.id());
        QCOMPARE(
            ids,
            QList<qint64>({HostDataSeeder::PROVIDER_INDIVIDUAL, HostDataSeeder::PROVIDER_LEGAL}));
        QVERIFY(context->bus().connected());
        QVERIFY(!context->pluginHost().isLoaded());
    }

    void secondWorkstationOnTheSameFolderIsRefused()
    {
        QTemporaryDir folder;
        const auto context = opened(folder);
        QVERIFY(context);
        QString error;
        QVERIFY(!TerminalContext::open(folder.path(), &error));
        QVERIFY2(error.contains(QStringLiteral("другое открытое рабочее место")),
                 qPrintable(error));
    }

    void folderThatCannotBeMadeIsRefused()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("file")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QString error;
        QVERIFY(!TerminalContext::open(folder.filePath(QStringLiteral("file/data")), &error));
        QVERIFY2(error.contains(QStringLiteral("создать не удалось")), qPrintable(error));
    }

    void damagedStoreIsRefusedAndKept_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"billing.sqlite", "fiscal.sqlite", "payments.sqlite",
                                 "host.sqlite", "charges.sqlite"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void damagedStoreIsRefusedAndKept()
    {
        QFETCH(QString, name);
        QTemporaryDir folder;
        const QByteArray garbage("no database at all, but somebody's only copy of something");
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(garbage);
        file.close();

        QString error;
        QVERIFY(!TerminalContext::open(folder.path(), &error));
        QVERIFY2(error.contains(name), qPrintable(error));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), garbage);
    }

    void storeThatIsNotOursToOpenIsRefusedAndKept_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("pragma");
        QTest::addColumn<QString>("reason");
        for (const char *name : {"billing.sqlite", "fiscal.sqlite", "payments.sqlite",
                                 "host.sqlite", "charges.sqlite"}) {
            QTest::addRow("%s, newer version", name)
                << QString::fromLatin1(name) << QStringLiteral("PRAGMA user_version = 1000")
                << QStringLiteral("более новой версией программы");
            QTest::addRow("%s, another program's", name)
                << QString::fromLatin1(name) << QStringLiteral("PRAGMA application_id = 77")
                << QStringLiteral("принадлежит другой программе");
        }
    }

    void storeThatIsNotOursToOpenIsRefusedAndKept()
    {
        QFETCH(QString, name);
        QFETCH(QString, pragma);
        QFETCH(QString, reason);
        QTemporaryDir folder;
        QVERIFY(opened(folder));
        const QString file = folder.filePath(name);
        {
            QSqlDatabase db =
                QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
            db.setDatabaseName(file);
            QVERIFY(db.open());
            QVERIFY(QSqlQuery(db).exec(pragma));
            db.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("other"));
        const auto content = [&file] {
            QFile stored(file);
            return stored.open(QIODevice::ReadOnly) ? stored.readAll() : QByteArray();
        };
        const QByteArray before = content();
        QVERIFY(!before.isEmpty());

        QString error;
        QVERIFY(!TerminalContext::open(folder.path(), &error));
        QVERIFY2(error.contains(reason) && error.contains(name), qPrintable(error));
        QVERIFY(content() == before);
    }

    void nothingIsLostOverARestart()
    {
        QTemporaryDir folder;
        qint64 packId = 0;
        QString storage;
        {
            const auto context = opened(folder);
            QVERIFY(context);
            const PayPack pack = somePack(*context);
            packId = pack.id();
            storage = context->fiscalJournal().storageNumber();
            QVERIFY(context->paysController().savePack(pack, true));
        }
        const auto context = opened(folder);
        QVERIFY(context);
        QCOMPARE(context->fiscalJournal().storageNumber(), storage);
        const auto kept = context->payments().page({}, PaymentOrder::NewestFirst, nullptr, 10);
        QCOMPARE(kept.size(), 1);
        QCOMPARE(kept.constFirst().packId, packId);
        QCOMPARE(kept.constFirst().sum.toString(), QStringLiteral("12.50"));
    }

    void accountRequestIsAnsweredOverTheBus()
    {
        QTemporaryDir folder;
        const auto context = opened(folder);
        QVERIFY(context);
        QSignalSpy answers(&context->bus(), &MessageBus::incomingMessage);
        const QVariantMap parameter{{QStringLiteral("name"), QStringLiteral("account")},
                                    {QStringLiteral("value"), SampleNumber::ORDINARY}};
        context->bus().sendMessage(
            BillingService::REQUEST_DESTINATION,
            QVariantMap{{QStringLiteral("code"), QStringLiteral("check")},
                        {QStringLiteral("uid"), QStringLiteral("1")},
                        {QStringLiteral("providerId"), BillingService::PROVIDER_INDIVIDUAL},
                        {QStringLiteral("params"),
                         QVariantMap{{QStringLiteral("payParamList"), QVariantList{parameter}}}}});
        QTRY_COMPARE(answers.count(), 1);
        const QJsonObject answer =
            QJsonDocument::fromJson(answers.at(0).at(1).toString().toUtf8()).object();
        QCOMPARE(answer.value(QStringLiteral("uid")).toString(), QStringLiteral("1"));
        QCOMPARE(answer.value(QStringLiteral("error")).toBool(), false);
    }

    void anotherBusCarriesEverythingAndBillingIsNotHere()
    {
        QTemporaryDir folder;
        QString error;
        auto given = std::make_unique<InProcessBus>();
        InProcessBus *elsewhere = given.get();
        int arrived = 0;
        elsewhere->serve(PaysController::PACK_DESTINATION, [&arrived](const QVariantMap &) {
            ++arrived;
            return InProcessBus::Outcome();
        });
        const auto context = TerminalContext::open(folder.path(), &error, std::move(given));
        QVERIFY2(context, qPrintable(error));
        QCOMPARE(&context->bus(), static_cast<MessageBus *>(elsewhere));
        QVERIFY(!context->billingIsOwn());
        const PayPack pack = somePack(*context);
        QVERIFY(context->paysController().savePack(pack, true));
        QCOMPARE(context->paysController().drain(context->bus()), 1);
        QTRY_COMPARE(context->payments().record(pack.id())->state, PackState::Posted);
        QCOMPARE(arrived, 1);
        QCOMPARE(context->billing().packCount(), 0);
        QVERIFY(context->busJournal().size() > 0);
        QVERIFY(!context->devices().controls(Device::Billing));
        // Billing elsewhere cannot be asked, and has not said that it lacks the pack.
        const auto report = context->reconciler().reconcile(PaymentReconciler::Scope::Open);
        QCOMPARE(report.cases.size(), 1);
        QCOMPARE(report.cases.at(0).state, PaymentCase::State::PostedNotAcknowledged);
    }

    void packLeftBehindIsSentAtTheNextStart()
    {
        QTemporaryDir folder;
        qint64 id = 0;
        {
            const auto context = opened(folder);
            QVERIFY(context);
            const PayPack pack = somePack(*context);
            id = pack.id();
            QVERIFY(context->paysController().savePack(pack, true));
            QCOMPARE(context->billing().packCount(), 0);
        }
        const auto context = opened(folder);
        QVERIFY(context);
        const auto stateOf = [&] { return context->payments().record(id)->state; };
        QTRY_COMPARE(stateOf(), PackState::Acknowledged);
        QVERIFY(context->billing().hasPack(QString::number(id)));
        QCOMPARE(context->billing().packCount(), 1);
        // The bus journal has what was sent before anybody could ask to see it.
        const BusJournal &journal = context->busJournal();
        QCOMPARE(journal.size(), 2);
        QCOMPARE(journal.at(0).message.address, PaysController::PACK_DESTINATION);
        QCOMPARE(journal.at(1).partner, journal.at(0).number);
    }

    void databasesAreReadableByTheirOwnerOnly()
    {
        QTemporaryDir folder;
        const auto context = opened(folder);
        QVERIFY(context);
        const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup
            | QFileDevice::ReadOther | QFileDevice::WriteOther;
        const QFileInfoList files =
            QDir(folder.path()).entryInfoList({QStringLiteral("*.sqlite*")}, QDir::Files);
        QVERIFY(files.size() >= 5);
        for (const QFileInfo &file : files)
            QVERIFY2(!(file.permissions() & others), qPrintable(file.fileName()));
    }
};

QTEST_GUILESS_MAIN(TestTerminalContext)
#include "tst_terminalcontext.moc"
