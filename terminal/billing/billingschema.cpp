#include <billing/billingschema.h>

basix::SqliteSchema BillingSchema::schema()
{
    const QString owner = QStringLiteral("payer INTEGER NOT NULL, account TEXT NOT NULL, ");
    const QString ownerKey = QStringLiteral(
        "FOREIGN KEY (payer, account) REFERENCES accounts (payer, number) ON DELETE CASCADE");
    basix::SqliteSchema result;
    result.applicationId = 0x53524231;
    result.title = QStringLiteral("База биллинга");
    result.migrations = {
        {1,
         {QStringLiteral(
              "CREATE TABLE accounts (payer INTEGER NOT NULL, number TEXT NOT NULL, fio TEXT "
              "NOT NULL, address TEXT NOT NULL, inn TEXT NOT NULL, charge INTEGER NOT NULL, "
              "debt INTEGER NOT NULL, remainder INTEGER NOT NULL, tax INTEGER NOT NULL, "
              "behaviour INTEGER NOT NULL, documents_form INTEGER NOT NULL, "
              "distributed_editable INTEGER NOT NULL, PRIMARY KEY (payer, number))"),
          QStringLiteral(
              "CREATE TABLE documents (%1position INTEGER NOT NULL, document_id INTEGER NOT "
              "NULL, number TEXT NOT NULL, charge INTEGER NOT NULL, topay INTEGER NOT NULL, "
              "PRIMARY KEY (payer, account, number), %2)")
              .arg(owner, ownerKey),
          QStringLiteral(
              "CREATE TABLE services (id INTEGER PRIMARY KEY, %1document TEXT NOT NULL, "
              "position INTEGER NOT NULL, service_id INTEGER NOT NULL, name TEXT NOT NULL, "
              "charge INTEGER NOT NULL, topay INTEGER NOT NULL, UNIQUE (payer, account, "
              "document, position), %2)")
              .arg(owner, ownerKey),
          QStringLiteral(
              "CREATE TABLE meters (%1position INTEGER NOT NULL, meter_id INTEGER NOT NULL, "
              "name TEXT NOT NULL, last_value INTEGER NOT NULL, PRIMARY KEY (payer, account, "
              "meter_id), %2)")
              .arg(owner, ownerKey),
          QStringLiteral(
              "CREATE TABLE fields (record TEXT NOT NULL, position INTEGER NOT NULL, name TEXT "
              "NOT NULL, title TEXT NOT NULL, type TEXT NOT NULL, mask TEXT NOT NULL, regexp "
              "TEXT NOT NULL, editable INTEGER NOT NULL, visible INTEGER NOT NULL, PRIMARY KEY "
              "(record, name))"),
          QStringLiteral("CREATE TABLE packs (pack_id TEXT PRIMARY KEY, received TEXT NOT NULL, "
                         "body TEXT NOT NULL)"),
          QStringLiteral(
              "CREATE TABLE pack_payments (pack_id TEXT NOT NULL REFERENCES packs (pack_id), "
              "position INTEGER NOT NULL, provider_id INTEGER NOT NULL, account TEXT NOT NULL, "
              "document TEXT NOT NULL, sum INTEGER NOT NULL, allocated INTEGER NOT NULL, "
              "PRIMARY KEY (pack_id, position))"),
          QStringLiteral(
              "CREATE TABLE pack_readings (pack_id TEXT NOT NULL REFERENCES packs (pack_id), "
              "payment INTEGER NOT NULL, position INTEGER NOT NULL, meter_id INTEGER NOT NULL, "
              "value INTEGER NOT NULL, applied INTEGER NOT NULL, PRIMARY KEY (pack_id, payment, "
              "position))")}}};
    return result;
}
