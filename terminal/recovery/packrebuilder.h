#pragma once

#include <fiscal/fiscalrecord.h>

#include <molvacore/paypack.h>
#include <molvacore/provider.h>

#include <basixcore/currency.h>

#include <QString>
#include <QVariantMap>
#include <QVector>

#include <optional>

/// Makes the pay pack of a receipt anew when the pack itself was lost between the register and the
/// payments store.
///
/// The receipt holds account, money, names of the services and readings, but no ids: billing books
/// such a pack on the account or document and keeps the readings for a person. One receipt always
/// gives the same pack, down to its id, whenever and wherever it is made.
class PackRebuilder final
{
public:
    struct Rebuilt
    {
        PayPack pack;
        /// Tells billing that and from what the pack was made anew.
        QVariantMap note;
    };

    PackRebuilder(const QVector<Provider> &providers, const basix::Currency &currency);

    /// Nothing, with a Russian text, when the receipt does not say which provider or account the
    /// money is for.
    std::optional<Rebuilt> rebuild(const FiscalRecord &receipt, QString *error) const;

    static qint64 packIdOf(const FiscalRecord &receipt);

private:
    QVector<Provider> m_providers;
    basix::Currency m_currency;
};
