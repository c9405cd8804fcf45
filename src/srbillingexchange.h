#pragma once

#include "sranswer.h"
#include "srrequest.h"

#include <basixcore/fixnumber.h>

#include <QHash>
#include <QString>
#include <QVariantMap>
#include <QVector>

/// A start page's exchange with the billing service: composes requests, keeps them until they are
/// answered and reads answers. It sends nothing itself and knows no widget.
///
/// A new request leaves older ones pending: a late answer is still matched by its own uid. A
/// request that is never answered stays until clear().
class SrBillingExchange
{
public:
    struct Parameter
    {
        QString name;
        QString value;
    };
    /// Who asks: BoxInfo::boxId(), the currency's ISO 4217 number, Provider::workProviderId().
    struct Sender
    {
        qint64 boxId = 0;
        int currencyId = 0;
        qint64 workProviderId = 0;
    };

    /// An account data request with a fresh uid, pending from now on. The page sends its toMap() to
    /// SRRequest::DESTINATION. A `sum` of zero is not sent.
    SRRequest compose(const Sender &sender, const QVector<Parameter> &parameters,
                      const basix::FixNumber &sum = basix::FixNumber());
    /// Reads a message from the bus. `headers` names its kind, `text` is JSON. Of several failures
    /// in one answer the first counts: "error", then "result", then "isError" inside "description".
    SrAnswer read(const QVariantMap &headers, const QString &text);
    /// Forgets every pending request; answers to them are no longer for us.
    void clear() { m_pending.clear(); }
    QHash<QString, SRRequest> pending() const { return m_pending; }

private:
    QHash<QString, SRRequest> m_pending;
};
