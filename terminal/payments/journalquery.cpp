#include <payments/journalquery.h>

#include <payments/paymentrows.h>

#include <QStringList>
#include <QVector>

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

QStringList columnsOf(PaymentOrder::Key key)
{
    using Key = PaymentOrder::Key;
    const QString sequence = QStringLiteral("sequence");
    switch (key) {
    case Key::Time:
        return {QStringLiteral("created"), QStringLiteral("account"), sequence};
    case Key::Provider:
        return {QStringLiteral("provider_name"), sequence};
    case Key::Account:
        return {QStringLiteral("account"), sequence};
    case Key::Sum:
        return {QStringLiteral("sum"), sequence};
    case Key::Cash:
        return {QStringLiteral("cash"), sequence};
    case Key::Card:
        return {QStringLiteral("card"), sequence};
    case Key::State:
        return {QStringLiteral("state"), sequence};
    }
    return {};
}

/// What columnsOf() holds in the row.
QVariantList placeOf(PaymentOrder::Key key, const PaymentRecord &row)
{
    using Key = PaymentOrder::Key;
    switch (key) {
    case Key::Time:
        return {PaymentRows::stamp(row.created), row.account, row.sequence};
    case Key::Provider:
        return {row.providerName, row.sequence};
    case Key::Account:
        return {row.account, row.sequence};
    case Key::Sum:
        return {row.sum.value(), row.sequence};
    case Key::Cash:
        return {row.cash.value(), row.sequence};
    case Key::Card:
        return {row.card.value(), row.sequence};
    case Key::State:
        return {int(row.state), row.sequence};
    }
    return {};
}

} // namespace

JournalQuery::JournalQuery(const PaymentFilter &filter, const PaymentOrder &order, Matches matches,
                           const PaymentRecord *after, int limit, int offset)
{
    m_sql = QStringLiteral("SELECT %1 FROM packs INDEXED BY %2")
                .arg(PaymentRows::columns(), indexFor(filter, matches));
    addFilter(filter, matches == Matches::One);
    if (after)
        addPlace(order, *after);
    const QString way = order.descending ? QStringLiteral(" DESC") : QStringLiteral(" ASC");
    m_sql += QStringLiteral(" ORDER BY %1 LIMIT ? OFFSET ?")
                 .arg((columnsOf(order.key).join(way + QStringLiteral(", "))) + way);
    m_values << limit << offset;
}

void JournalQuery::addPlace(const PaymentOrder &order, const PaymentRecord &after)
{
    const QStringList columns = columnsOf(order.key);
    const QStringList marks(QVector<QString>(columns.size(), QStringLiteral("?")).toList());
    const QString separator = QStringLiteral(", ");
    add(QStringLiteral("(%1) %2 (%3)")
            .arg(columns.join(separator),
                 order.descending ? QLatin1String("<") : QLatin1String(">"), marks.join(separator)),
        placeOf(order.key, after));
}

JournalQuery JournalQuery::walkCount(const PaymentFilter &filter, Matches matches)
{
    const QString index = indexFor(filter, matches);
    PaymentFilter walked = filter;
    if (index != QLatin1String("packs_by_account"))
        walked.account.clear();
    if (index != QLatin1String("packs_by_state"))
        walked.state = -1;
    JournalQuery query;
    query.m_sql = QStringLiteral("SELECT 1 FROM packs INDEXED BY %1").arg(index);
    query.addFilter(walked, matches == Matches::One);
    query.m_sql = QStringLiteral("SELECT count(*) FROM (%1 LIMIT %2)")
                      .arg(query.m_sql, QString::number(MOST_SORTED + 1));
    return query;
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
