#pragma once

#include <QByteArray>
#include <QString>
#include <QVariantMap>

class BillingDatabase;

/// What billing sends back.
struct BillingAnswer
{
    QVariantMap headers;
    QByteArray body;
    /// Nothing is sent; headers and body are empty.
    bool silent = false;
    /// Milliseconds that billing takes its time for.
    int delay = 0;
};

/// The utility's billing, whatever carries the messages.
///
/// Account requests: the map holds "code" = "check", "uid", "providerId", "params" (or its text,
/// "checkdata") with "payParamList", and possibly "summ". Two providers are served: individuals by
/// account, legal entities by contract and, when "numdoc" is given, by that document alone.
///
/// Without a planned sum every "distributed" is 0.00, or what is due where the cashier may not
/// change it. A planned sum is spread over what is due, line by line in the order sent and never
/// more than is due; what is left of it is added to the account's "remainder". A contract that is
/// asked for without a document gets no spreading: which document the money is for is not known
/// yet.
class BillingService final
{
public:
    static const QString REQUEST_DESTINATION;
    static const QString PACK_DESTINATION;
    static const qint64 PROVIDER_INDIVIDUAL;
    static const qint64 PROVIDER_LEGAL;

    /// `database` must be open and outlive the service.
    explicit BillingService(BillingDatabase &database);

    BillingAnswer answer(const QVariantMap &request);
    /// Acknowledges with {"packId", "error", "repeated", "description"}; "error" is true when the
    /// pack was not taken.
    BillingAnswer takePayPack(const QVariantMap &pack);

private:
    BillingDatabase &m_database;
};
