#include <payments/paymentrows.h>

#include <storage/sqlstatement.h>

namespace {

const QString COLUMNS = QStringLiteral("pack_id, state, created, provider_id, provider_name, "
                                       "account, sum, cash, card, fiscal_storage, "
                                       "fiscal_document, fiscal_sign, handed_on, posted, "
                                       "acknowledged, last_error, recovered, sequence");

int digits(const QString &text, int from, int count)
{
    return text.midRef(from, count).toInt();
}

/// The text that stamp() makes, "2026-11-21T10:00:00.000Z". Qt's own reader of any ISO text takes
/// longer than SQLite does for the whole row.
QDateTime fromStamp(const QString &text)
{
    if (text.size() != 24)
        return QDateTime();
    const QDate date(digits(text, 0, 4), digits(text, 5, 2), digits(text, 8, 2));
    const QTime time(digits(text, 11, 2), digits(text, 14, 2), digits(text, 17, 2),
                     digits(text, 20, 3));
    return QDateTime(date, time, Qt::UTC);
}

basix::FixNumber money(qint64 kopecks)
{
    return basix::FixNumber(100, kopecks);
}

} // namespace

QString PaymentRows::columns()
{
    return COLUMNS;
}

basix::SqliteSchema PaymentRows::schema()
{
    basix::SqliteSchema result;
    result.applicationId = 0x53524A31;
    result.title = QStringLiteral("Журнал платежей");
    result.migrations = {
        {1,
         {QStringLiteral(
              "CREATE TABLE packs (sequence INTEGER PRIMARY KEY AUTOINCREMENT, pack_id INTEGER "
              "NOT NULL UNIQUE, state INTEGER NOT NULL, created TEXT NOT NULL, provider_id "
              "INTEGER NOT NULL, provider_name TEXT NOT NULL, account TEXT NOT NULL, sum "
              "INTEGER NOT NULL, cash INTEGER NOT NULL, card INTEGER NOT NULL, fiscal_storage "
              "TEXT NOT NULL, fiscal_document TEXT NOT NULL, fiscal_sign TEXT NOT NULL, saved "
              "TEXT NOT NULL, handed_on TEXT NOT NULL DEFAULT '', posted TEXT NOT NULL DEFAULT "
              "'', acknowledged TEXT NOT NULL DEFAULT '', last_error TEXT NOT NULL DEFAULT '', "
              "body TEXT NOT NULL)"),
          QStringLiteral("CREATE INDEX packs_by_time ON packs (created)"),
          QStringLiteral("CREATE INDEX packs_by_account ON packs (account, created)"),
          QStringLiteral("CREATE INDEX packs_by_state ON packs (state, created)")}},
        {2,
         {QStringLiteral("ALTER TABLE packs ADD COLUMN recovered INTEGER NOT NULL DEFAULT 0"),
          QStringLiteral("CREATE INDEX packs_by_receipt ON packs (fiscal_storage, "
                         "CAST(fiscal_document AS INTEGER))")}},
        // With the account in them a search walks an index and reads only the rows that it shows.
        {3,
         {QStringLiteral("DROP INDEX packs_by_time"), QStringLiteral("DROP INDEX packs_by_state"),
          QStringLiteral("CREATE INDEX packs_by_time ON packs (created, account)"),
          QStringLiteral("CREATE INDEX packs_by_state ON packs (state, created, account)")}}};
    return result;
}

QString PaymentRows::stamp(const QDateTime &time)
{
    return time.isValid() ? time.toUTC().toString(Qt::ISODateWithMs) : QString();
}

PaymentRecord PaymentRows::read(const SqlStatement &row)
{
    PaymentRecord record;
    record.packId = row.number(0);
    record.state = static_cast<PackState>(row.number(1));
    record.created = fromStamp(row.text(2));
    record.providerId = row.number(3);
    record.providerName = row.text(4);
    record.account = row.text(5);
    record.sum = money(row.number(6));
    record.cash = money(row.number(7));
    record.card = money(row.number(8));
    record.fiscalStorage = row.text(9);
    record.fiscalDocument = row.text(10);
    record.fiscalSign = row.text(11);
    record.handedOn = fromStamp(row.text(12));
    record.posted = fromStamp(row.text(13));
    record.acknowledged = fromStamp(row.text(14));
    record.lastError = row.text(15);
    record.recovered = row.number(16) != 0;
    record.sequence = row.number(17);
    return record;
}

QString PaymentRows::timeColumn(PackState state)
{
    switch (state) {
    case PackState::Saved:
        return QStringLiteral("saved");
    case PackState::HandedOn:
        return QStringLiteral("handed_on");
    case PackState::Posted:
        return QStringLiteral("posted");
    case PackState::Acknowledged:
        return QStringLiteral("acknowledged");
    }
    return QString();
}
