#pragma once

#include <payments/paymentrecord.h>

#include <QString>
#include <QVariantList>

/// The SELECT of one page of the journal.
///
/// Every page names the index that it walks: its cost follows from the rows that it returns, not
/// from those of the table, and no statistics of the file can change that. A page begins after a
/// row, not after a number of rows.
///
/// Only the order of time has indexes; others would cost every save. A page in another order sorts
/// what the filter's index gives, which is quick for as many as MOST_SORTED, see walkCount().
class JournalQuery final
{
public:
    /// How many payments have an account that begins with the text searched for.
    enum class Matches {
        One,  ///< all of them have the same account
        Few,  ///< at most FEW: cheap to sort
        Many, ///< more: walking by time soon meets a page of them
    };
    static constexpr int FEW = 1000;
    static constexpr int MOST_SORTED = 5000;

    /// `matches` is of no meaning without an account in `filter`. `after` is the last row of the
    /// page before; null for the first page.
    JournalQuery(const PaymentFilter &filter, const PaymentOrder &order, Matches matches,
                 const PaymentRecord *after, int limit, int offset = 0);

    QString sql() const { return m_sql; }
    const QVariantList &values() const { return m_values; }

    /// How many payments pass the filter; walks over all of them.
    static JournalQuery count(const PaymentFilter &filter);
    /// How many entries of its index a page in another order than that of time has to look at,
    /// counted up to MOST_SORTED + 1.
    static JournalQuery walkCount(const PaymentFilter &filter, Matches matches);
    /// The lowest and the highest account that begins with the text; counts nothing.
    static JournalQuery accounts(const QString &text);
    /// How many payments match, counted up to FEW + 1.
    static JournalQuery matchCount(const QString &text);

private:
    JournalQuery() = default;
    void addFilter(const PaymentFilter &filter, bool oneAccount);
    void addPlace(const PaymentOrder &order, const PaymentRecord &after);
    void add(const QString &clause, const QVariantList &values);

    QString m_sql;
    QVariantList m_values;
    bool m_hasClause = false;
};
