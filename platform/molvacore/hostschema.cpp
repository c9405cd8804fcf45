#include <molvacore/hostschema.h>

namespace {

constexpr qint32 hostApplicationId = 0x4d4f4c56; // "MOLV"

/// The one row of `host_state` points at the records that are current; a null points at none.
QStringList firstVersion()
{
    return {
        QStringLiteral("CREATE TABLE currencies ("
                       " number3 INTEGER PRIMARY KEY, code3 TEXT NOT NULL, name TEXT NOT NULL)"),
        QStringLiteral(
            "CREATE TABLE boxes ("
            " id INTEGER PRIMARY KEY CHECK (id > 0), name TEXT NOT NULL, address TEXT NOT NULL,"
            " currency INTEGER NOT NULL REFERENCES currencies (number3))"),
        QStringLiteral("CREATE TABLE commission_profiles ("
                       " id INTEGER PRIMARY KEY CHECK (id > 0), name TEXT NOT NULL)"),
        QStringLiteral("CREATE TABLE receipt_profiles ("
                       " id INTEGER PRIMARY KEY CHECK (id > 0), name TEXT NOT NULL)"),
        QStringLiteral("CREATE TABLE online_profiles ("
                       " id INTEGER PRIMARY KEY CHECK (id > 0), name TEXT NOT NULL)"),
        QStringLiteral(
            "CREATE TABLE online_profile_infos ("
            " profile INTEGER NOT NULL REFERENCES online_profiles (id) ON DELETE CASCADE,"
            " scope INTEGER NOT NULL CHECK (scope IN (0, 1, 2)),"
            " subject INTEGER NOT NULL,"
            " additional_prop TEXT NOT NULL, additional_prop_value TEXT NOT NULL,"
            " tax_system INTEGER NOT NULL, tax_rate INTEGER NOT NULL, calc_type INTEGER NOT NULL,"
            " agent_sign INTEGER NOT NULL, pay_agent_op TEXT NOT NULL, pay_agent_phone TEXT NOT "
            "NULL,"
            " pay_operator_phone TEXT NOT NULL, transfer_operator_address TEXT NOT NULL,"
            " transfer_operator_inn TEXT NOT NULL, transfer_operator_name TEXT NOT NULL,"
            " transfer_operator_phone TEXT NOT NULL,"
            " PRIMARY KEY (profile, scope, subject)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE users ("
                       " id INTEGER PRIMARY KEY CHECK (id > 0), full_name TEXT NOT NULL)"),
        QStringLiteral(
            "CREATE TABLE fiscal_register_settings ("
            " id INTEGER PRIMARY KEY CHECK (id = 1), inn TEXT NOT NULL, reg_number TEXT NOT NULL)"),
        QStringLiteral("CREATE TABLE card_reader_settings ("
                       " id INTEGER PRIMARY KEY CHECK (id = 1), type INTEGER NOT NULL, outcome "
                       "TEXT NOT NULL)"),
        QStringLiteral("CREATE TABLE providers ("
                       " id INTEGER PRIMARY KEY CHECK (id > 0), work_provider_id INTEGER NOT NULL,"
                       " group_id INTEGER NOT NULL, check_name TEXT NOT NULL, name TEXT NOT NULL,"
                       " legal_name TEXT NOT NULL, inn TEXT NOT NULL, phones TEXT NOT NULL)"),
        QStringLiteral("CREATE TABLE provider_parameters ("
                       " provider INTEGER NOT NULL REFERENCES providers (id) ON DELETE CASCADE,"
                       " position INTEGER NOT NULL, name TEXT NOT NULL, title TEXT NOT NULL, value "
                       "TEXT NOT NULL,"
                       " PRIMARY KEY (provider, position)) WITHOUT ROWID"),
        QStringLiteral(
            "CREATE TABLE host_state ("
            " id INTEGER PRIMARY KEY CHECK (id = 1),"
            " box INTEGER REFERENCES boxes (id) ON DELETE SET NULL,"
            " commission_profile INTEGER REFERENCES commission_profiles (id) ON DELETE SET NULL,"
            " receipt_profile INTEGER REFERENCES receipt_profiles (id) ON DELETE SET NULL,"
            " online_profile INTEGER REFERENCES online_profiles (id) ON DELETE SET NULL)"),
        QStringLiteral("INSERT INTO host_state (id) VALUES (1)"),
    };
}

} // namespace

basix::SqliteSchema hostSchema()
{
    basix::SqliteSchema schema;
    schema.applicationId = hostApplicationId;
    schema.title = QStringLiteral("База данных рабочего места");
    schema.migrations = {{1, firstVersion()}};
    return schema;
}
