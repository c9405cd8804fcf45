#include "benchrows.h"

#include "support/generatedanswers.h"

#include "individual/srpersonalaccount.h"

#include <payments/paymentsstore.h>
#include <payments/payscontroller.h>

#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqliteschema.h>
#include <basixcore/sqlitetransaction.h>
#include <molvacore/paypack.h>
#include <molvacore/providerparameter.h>

#include <QJsonDocument>
#include <QSqlQuery>
#include <QTemporaryDir>

namespace {

constexpr qint64 boxId = 77;

/// A pack as it comes from the payment page: the payment of an account with this many services and
/// the receipt that was printed.
PayPack pack(int services)
{
    SrPersonalAccount account;
    account.parseCheckList(
        GeneratedAnswers::description(GeneratedAnswers::Form::Personal, services));
    account.setAccountNumber(QStringLiteral("4455001"));
    Provider provider;
    provider.setId(18722);
    provider.setWorkProviderId(18722);
    provider.setCheckName(QStringLiteral("Селмар Ривенхолд"));
    for (const char *name : {"account", "period", "paydata", "qrcode"}) {
        ProviderParameter parameter;
        parameter.setName(QString::fromLatin1(name));
        provider.addParameter(parameter);
    }
    return account.createPack(provider, {}, basix::Currency(643, QStringLiteral("RUB"), QString()),
                              basix::FixNumber(100, 0), account.amount());
}

void savePacks(benchmark::State &state, int services)
{
    const QTemporaryDir folder;
    PaymentsStore store;
    if (!store.open(folder.filePath(QStringLiteral("payments.sqlite"))))
        state.SkipWithError(qPrintable(store.lastError()));
    PaysController controller(store, boxId);
    PayPack saved = pack(services);
    qint64 id = 1;
    for (auto _ : state) {
        saved.setId(id++);
        if (!controller.savePack(saved, true))
            state.SkipWithError(qPrintable(controller.lastError()));
    }
}

void commitBytes(benchmark::State &state, int services)
{
    const QTemporaryDir folder;
    basix::SqliteSchema schema;
    schema.applicationId = 1;
    schema.migrations = {{1,
                          {QStringLiteral("CREATE TABLE packs (id INTEGER PRIMARY KEY, "
                                          "body TEXT NOT NULL)")}}};
    basix::SqliteDatabase database;
    if (!database.open(folder.filePath(QStringLiteral("bytes.sqlite")), schema))
        state.SkipWithError(qPrintable(database.lastError()));
    const QString body =
        QString::fromUtf8(QJsonDocument::fromVariant(PayPack::packToFullMap(pack(services)))
                              .toJson(QJsonDocument::Compact));
    qint64 id = 1;
    for (auto _ : state) {
        basix::SqliteTransaction transaction(database);
        {
            QSqlQuery insert(database.connection());
            insert.prepare(QStringLiteral("INSERT INTO packs (id, body) VALUES (?, ?)"));
            insert.addBindValue(id++);
            insert.addBindValue(body);
            insert.exec();
        }
        if (!transaction.commit())
            state.SkipWithError(qPrintable(transaction.lastError()));
    }
}

} // namespace

QVector<BenchRow> storeRows()
{
    BenchRow row;
    row.id = QStringLiteral("save-pack");
    row.subject = QStringLiteral("Надёжное сохранение пачки");
    row.floorText = QStringLiteral("одна фиксация тех же байтов в SQLite с той же надёжностью");
    row.sizeText = QStringLiteral("услуг");
    row.atMost = 1.3;
    row.unit = BenchRow::Unit::RealTime;
    row.sizes = {2, 10, 50, 100, 500};
    row.measured = savePacks;
    row.bare = commitBytes;
    return {row};
}
