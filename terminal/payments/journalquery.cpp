#include <payments/journalquery.h>

#include <payments/paymentrows.h>

namespace {

const QString RANGE = QStringLiteral("account >= ? AND account < ?");

/// The least text above every one that begins with `text`, as SQLite compares UTF-8.
QString above(const QString &text)
{
    return text + QString::fromUtf8("\xF4\x8F\xBF\xBF");
}

QString indexFor(const PaymentFilter &filter, JournalQuery::Matches matches)
{
    const bool searched = !filter.account.isEmpty();
    const bool fewInAll = !filter.from.isValid() && matches == JournalQuery::Matches::Few;
    if (searched && (matches == JournalQuery::Matches::One || fewInAll))
        return QStringLiteral("packs_by_account");
    return filter.state >= 0 ? QStringLiteral("packs_by_state") : QStringLiteral("packs_by_time");
}

} // namespace

JournalQuery::JournalQuery(const PaymentFilter &filter, PaymentOrder order, Matches matches,
                           const PaymentRecord *after, int limit, int offset)
{
    const bool newest = order == PaymentOrder::NewestFirst;
    m_sql = QStringLiteral("SELECT %1 FROM packs INDEXED BY %2")
                .arg(PaymentRows::columns(), indexFor(filter, matches));
    addFilter(filter, matches == Matches::One);
    if (after) {
        add(QStringLiteral("(created, account, sequence) %1 (?, ?, ?)")
                .arg(newest ? QLatin1Char('<') : QLatin1Char('>')),
            {PaymentRows::stamp(after->created), after->account, after->sequence});
    }
    m_sql += QStringLiteral(" ORDER BY created %1, account %1, sequence %1 LIMIT ? OFFSET ?")
                 .arg(newest ? QStringLiteral("DESC") : QStringLiteral("ASC"));
    m_values << limit << offset;
}

JournalQuery JournalQuery::count(const PaymentFilter &filter)
{
    JournalQuery query;
    query.m_sql = QStringLiteral("SELECT count(*) FROM packs");
    query.addFilter(filter, false);
    return query;
}

JournalQuery JournalQuery::accounts(const QString &text)
{
    // Two subqueries: min() and max() of one SELECT would read every row between them.
    const QString one = QStringLiteral("(SELECT %1(account) FROM packs WHERE %2)");
    JournalQuery query;
    query.m_sql =
        QStringLiteral("SELECT %1, %2")
            .arg(one.arg(QStringLiteral("min"), RANGE), one.arg(QStringLiteral("max"), RANGE));
    query.m_values = {text, above(text), text, above(text)};
    return query;
}

JournalQuery JournalQuery::matchCount(const QString &text)
{
    JournalQuery query;
    query.m_sql =
        QStringLiteral("SELECT count(*) FROM (SELECT 1 FROM packs INDEXED BY packs_by_account "
                       "WHERE %1 LIMIT %2)")
            .arg(RANGE, QString::number(FEW + 1));
    query.m_values = {text, above(text)};
    return query;
}

void JournalQuery::addFilter(const PaymentFilter &filter, bool oneAccount)
{
    if (filter.from.isValid())
        add(QStringLiteral("created >= ?"), {PaymentRows::stamp(filter.from)});
    if (filter.until.isValid())
        add(QStringLiteral("created < ?"), {PaymentRows::stamp(filter.until)});
    if (filter.state >= 0)
        add(QStringLiteral("state = ?"), {filter.state});
    if (!filter.account.isEmpty()) {
        // One account: the equality lets the index give the order of time.
        if (oneAccount)
            add(QStringLiteral("account = (SELECT min(account) FROM packs WHERE %1)").arg(RANGE),
                {filter.account, above(filter.account)});
        else
            add(RANGE, {filter.account, above(filter.account)});
    }
}

void JournalQuery::add(const QString &clause, const QVariantList &values)
{
    m_sql += (m_hasClause ? QStringLiteral(" AND ") : QStringLiteral(" WHERE ")) + clause;
    m_hasClause = true;
    m_values += values;
}
