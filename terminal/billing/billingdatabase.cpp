#include <billing/billingdatabase.h>

#include <billing/billingpackintake.h>
#include <billing/billingschema.h>
#include <billing/samplecatalogue.h>
#include <storage/sqlstatement.h>
#include <storage/writecheck.h>

#include <basixcore/sqlitedatabase.h>
#include <basixcore/sqlitetransaction.h>

namespace {

int number(SampleAccount::Payer payer)
{
    return static_cast<int>(payer);
}

bool readServices(const basix::SqliteDatabase &database, const BillingAccount &account,
                  const QString &document, QVector<BillingServiceLine> *lines, QString *error)
{
    SqlStatement rows(
        database,
        QStringLiteral("SELECT service_id, name, charge, topay FROM services WHERE payer = ? "
                       "AND account = ? AND document = ? ORDER BY position"));
    rows.bind(number(account.payer)).bind(account.number).bind(document);
    if (!rows.run()) {
        *error = rows.error();
        return false;
    }
    while (rows.next())
        lines->append({rows.number(0), rows.text(1), rows.number(2), rows.number(3)});
    return true;
}

bool readMeters(const basix::SqliteDatabase &database, BillingAccount *account, QString *error)
{
    SqlStatement rows(
        database,
        QStringLiteral("SELECT meter_id, name, last_value FROM meters WHERE payer = ? AND "
                       "account = ? ORDER BY position"));
    rows.bind(number(account->payer)).bind(account->number);
    if (!rows.run()) {
        *error = rows.error();
        return false;
    }
    while (rows.next())
        account->meters.append({rows.number(0), rows.text(1), rows.number(2)});
    return true;
}

bool readDocuments(const basix::SqliteDatabase &database, BillingAccount *account, QString *error)
{
    SqlStatement rows(
        database,
        QStringLiteral("SELECT document_id, number, charge, topay FROM documents WHERE "
                       "payer = ? AND account = ? ORDER BY position"));
    rows.bind(number(account->payer)).bind(account->number);
    if (!rows.run()) {
        *error = rows.error();
        return false;
    }
    while (rows.next()) {
        BillingDocument document;
        document.documentId = rows.number(0);
        document.number = rows.text(1);
        document.charge = rows.number(2);
        document.topay = rows.number(3);
        account->documents.append(document);
    }
    for (BillingDocument &document : account->documents) {
        if (!readServices(database, *account, document.number, &document.services, error))
            return false;
    }
    return true;
}

bool insertServices(const basix::SqliteDatabase &database, const BillingAccount &account,
                    const QString &document, const QVector<BillingServiceLine> &lines,
                    QString *error)
{
    for (int i = 0; i < lines.size(); ++i) {
        const BillingServiceLine &line = lines.at(i);
        SqlStatement insert(
            database,
            QStringLiteral("INSERT INTO services (payer, account, document, position, "
                           "service_id, name, charge, topay) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"));
        insert.bind(number(account.payer)).bind(account.number).bind(document).bind(i);
        insert.bind(line.serviceId).bind(line.name).bind(line.charge).bind(line.topay);
        if (!insert.run()) {
            *error = insert.error();
            return false;
        }
    }
    return true;
}

bool insertMeters(const basix::SqliteDatabase &database, const BillingAccount &account,
                  QString *error)
{
    for (int i = 0; i < account.meters.size(); ++i) {
        const BillingMeter &meter = account.meters.at(i);
        SqlStatement insert(
            database,
            QStringLiteral("INSERT INTO meters (payer, account, position, meter_id, name, "
                           "last_value) VALUES (?, ?, ?, ?, ?, ?)"));
        insert.bind(number(account.payer)).bind(account.number).bind(i);
        insert.bind(meter.meterId).bind(meter.name).bind(meter.lastValue);
        if (!insert.run()) {
            *error = insert.error();
            return false;
        }
    }
    return true;
}

bool insertDocuments(const basix::SqliteDatabase &database, const BillingAccount &account,
                     QString *error)
{
    for (int i = 0; i < account.documents.size(); ++i) {
        const BillingDocument &document = account.documents.at(i);
        SqlStatement insert(
            database,
            QStringLiteral("INSERT INTO documents (payer, account, position, document_id, "
                           "number, charge, topay) VALUES (?, ?, ?, ?, ?, ?, ?)"));
        insert.bind(number(account.payer)).bind(account.number).bind(i).bind(document.documentId);
        insert.bind(document.number).bind(document.charge).bind(document.topay);
        if (!insert.run()) {
            *error = insert.error();
            return false;
        }
        if (!insertServices(database, account, document.number, document.services, error))
            return false;
    }
    return true;
}

bool insertAccount(const basix::SqliteDatabase &database, const BillingAccount &account,
                   QString *error)
{
    SqlStatement remove(database,
                        QStringLiteral("DELETE FROM accounts WHERE payer = ? AND number = ?"));
    remove.bind(number(account.payer)).bind(account.number);
    SqlStatement insert(
        database,
        QStringLiteral("INSERT INTO accounts VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    insert.bind(number(account.payer)).bind(account.number).bind(account.fio).bind(account.address);
    insert.bind(account.inn)
        .bind(account.charge)
        .bind(account.debt)
        .bind(account.remainder)
        .bind(account.tax);
    insert.bind(static_cast<int>(account.behaviour)).bind(static_cast<int>(account.documentsForm));
    insert.bind(account.distributedEditable ? 1 : 0);
    if (!remove.run() || !insert.run()) {
        *error = remove.error() + insert.error();
        return false;
    }
    return insertServices(database, account, QString(), account.services, error)
        && insertMeters(database, account, error) && insertDocuments(database, account, error);
}

bool insertFields(const basix::SqliteDatabase &database, QString *error)
{
    int position = 0;
    const QVector<QPair<QString, BillingField>> fields = SampleCatalogue::fields();
    for (const QPair<QString, BillingField> &entry : fields) {
        const BillingField &field = entry.second;
        SqlStatement insert(
            database, QStringLiteral("INSERT INTO fields VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"));
        insert.bind(entry.first)
            .bind(position++)
            .bind(field.name)
            .bind(field.title)
            .bind(field.type);
        insert.bind(field.mask)
            .bind(field.regexp)
            .bind(field.editable ? 1 : 0)
            .bind(field.visible ? 1 : 0);
        if (!insert.run()) {
            *error = insert.error();
            return false;
        }
    }
    return true;
}

/// Fills a file that has no fields yet, all or nothing.
bool seed(basix::SqliteDatabase &database, QString *error)
{
    basix::SqliteTransaction transaction(database);
    if (!transaction.isActive()) {
        *error = QStringLiteral("База биллинга занята: %1").arg(transaction.lastError());
        return false;
    }
    {
        SqlStatement filled(database, QStringLiteral("SELECT count(*) FROM fields"));
        if (!filled.run() || !filled.next()) {
            *error = filled.error();
            return false;
        }
        if (filled.number(0) > 0)
            return true;
    }
    if (!insertFields(database, error))
        return false;
    const QVector<BillingAccount> accounts = SampleCatalogue::accounts();
    for (const BillingAccount &account : accounts) {
        if (!insertAccount(database, account, error))
            return false;
    }
    if (transaction.commit())
        return true;
    *error = QStringLiteral("База биллинга не записана: %1").arg(transaction.lastError());
    return false;
}

} // namespace

BillingDatabase::BillingDatabase() = default;
BillingDatabase::~BillingDatabase() = default;

bool BillingDatabase::open(const QString &file)
{
    m_database = std::make_unique<basix::SqliteDatabase>();
    m_error = openForWriting(*m_database, file, BillingSchema::schema());
    if (m_error.isEmpty() && seed(*m_database, &m_error))
        return true;
    m_database->close();
    return false;
}

bool BillingDatabase::isOpen() const
{
    return m_database && m_database->isOpen();
}

QString BillingDatabase::lastError() const
{
    return m_error;
}

bool BillingDatabase::ready()
{
    m_error = isOpen() ? QString() : QStringLiteral("База биллинга не открыта.");
    return isOpen();
}

std::optional<BillingAccount> BillingDatabase::account(SampleAccount::Payer payer,
                                                       const QString &accountNumber)
{
    if (!ready())
        return std::nullopt;
    BillingAccount account;
    account.payer = payer;
    account.number = accountNumber;
    {
        SqlStatement row(
            *m_database,
            QStringLiteral("SELECT fio, address, inn, charge, debt, remainder, tax, behaviour, "
                           "documents_form, distributed_editable FROM accounts WHERE payer = ? "
                           "AND number = ?"));
        row.bind(number(payer)).bind(accountNumber);
        if (!row.run()) {
            m_error = row.error();
            return std::nullopt;
        }
        if (!row.next())
            return std::nullopt;
        account.fio = row.text(0);
        account.address = row.text(1);
        account.inn = row.text(2);
        account.charge = row.number(3);
        account.debt = row.number(4);
        account.remainder = row.number(5);
        account.tax = row.number(6);
        account.behaviour = static_cast<AnswerBehaviour>(row.number(7));
        account.documentsForm = static_cast<BillingAccount::DocumentsForm>(row.number(8));
        account.distributedEditable = row.number(9) != 0;
    }
    if (!readServices(*m_database, account, QString(), &account.services, &m_error)
        || !readMeters(*m_database, &account, &m_error)
        || !readDocuments(*m_database, &account, &m_error))
        return std::nullopt;
    return account;
}

bool BillingDatabase::saveAccount(const BillingAccount &account)
{
    if (!ready())
        return false;
    basix::SqliteTransaction transaction(*m_database);
    if (!transaction.isActive()) {
        m_error = QStringLiteral("База биллинга занята: %1").arg(transaction.lastError());
        return false;
    }
    if (!insertAccount(*m_database, account, &m_error))
        return false;
    if (transaction.commit())
        return true;
    m_error = QStringLiteral("Счёт %1 не записан: %2").arg(account.number, transaction.lastError());
    return false;
}

QVector<BillingField> BillingDatabase::fields(const QString &record)
{
    QVector<BillingField> result;
    if (!ready())
        return result;
    SqlStatement rows(
        *m_database,
        QStringLiteral("SELECT name, title, type, mask, regexp, editable, visible FROM fields "
                       "WHERE record = ? ORDER BY position"));
    rows.bind(record);
    if (!rows.run())
        m_error = rows.error();
    while (rows.next()) {
        result.append({rows.text(0), rows.text(1), rows.text(2), rows.text(3), rows.text(4),
                       rows.number(5) != 0, rows.number(6) != 0});
    }
    return result;
}

BillingDatabase::Taking BillingDatabase::takePack(const QVariantMap &pack)
{
    if (!ready())
        return Taking::Refused;
    BillingPackIntake intake(*m_database);
    const Taking taking = intake.take(pack);
    m_error = intake.error();
    return taking;
}

int BillingDatabase::packCount()
{
    if (!ready())
        return 0;
    SqlStatement count(*m_database, QStringLiteral("SELECT count(*) FROM packs"));
    if (count.run() && count.next())
        return int(count.number(0));
    m_error = count.error();
    return 0;
}

bool BillingDatabase::hasPack(const QString &packId)
{
    if (!ready())
        return false;
    SqlStatement find(*m_database, QStringLiteral("SELECT 1 FROM packs WHERE pack_id = ?"));
    find.bind(packId);
    const bool ran = find.run();
    m_error = find.error();
    return ran && find.next();
}

QVector<TakenPayment> BillingDatabase::takenPayments(const QString &packId)
{
    QVector<TakenPayment> result;
    if (!ready())
        return result;
    SqlStatement rows(*m_database,
                      QStringLiteral("SELECT provider_id, account, document, sum, allocated FROM "
                                     "pack_payments WHERE pack_id = ? ORDER BY position"));
    rows.bind(packId);
    if (!rows.run())
        m_error = rows.error();
    while (rows.next())
        result.append({packId, rows.number(0), rows.text(1), rows.text(2), rows.number(3),
                       rows.number(4) != 0});
    return result;
}

QVector<QPair<qint64, qint64>> BillingDatabase::takenReadings(const QString &packId)
{
    QVector<QPair<qint64, qint64>> result;
    if (!ready())
        return result;
    SqlStatement rows(*m_database,
                      QStringLiteral("SELECT meter_id, value FROM pack_readings WHERE pack_id = ? "
                                     "ORDER BY payment, position"));
    rows.bind(packId);
    if (!rows.run())
        m_error = rows.error();
    while (rows.next())
        result.append({rows.number(0), rows.number(1)});
    return result;
}
