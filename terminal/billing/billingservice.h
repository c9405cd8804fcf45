#pragma once

#include <billing/sampleaccounts.h>

#include <QByteArray>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <optional>
#include <vector>

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
    /// What billing sends besides, each with a delay of its own; also when it is silent.
    std::vector<BillingAnswer> others;
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
    static inline const QString REQUEST_DESTINATION = QStringLiteral("/app/box_plugin_check_pay");
    static inline const QString PACK_DESTINATION = QStringLiteral("/app/add_pay_pack");
    static const qint64 PROVIDER_INDIVIDUAL;
    static const qint64 PROVIDER_LEGAL;

    /// `database` must be open and outlive the service.
    explicit BillingService(BillingDatabase &database);

    /// Answers from now on as `behaviour` says, whatever the account's own; Ordinary leaves it to
    /// the account again. An answer that was held for the next request is dropped.
    void force(AnswerBehaviour behaviour);
    AnswerBehaviour forced() const { return m_forced; }

    BillingAnswer answer(const QVariantMap &request);
    /// Acknowledges with {"packId", "error", "repeated", "description"}; "error" is true when the
    /// pack was not taken.
    BillingAnswer takePayPack(const QVariantMap &pack);

private:
    /// What there is to answer, before any behaviour bends it.
    struct Finding
    {
        QVariantList fields;
        /// Why there are none; empty when there are.
        QString outerError;
        QString innerError;
        AnswerBehaviour behaviour = AnswerBehaviour::Ordinary;
    };

    Finding find(const QVariantMap &request);
    BillingAnswer behave(AnswerBehaviour behaviour, const QString &uid, const Finding &finding);
    BillingAnswer late(const BillingAnswer &answer);

    BillingDatabase &m_database;
    AnswerBehaviour m_forced = AnswerBehaviour::Ordinary;
    /// The answer to a request that the next one overtakes.
    std::optional<BillingAnswer> m_held;
};
