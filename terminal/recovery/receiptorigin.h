#pragma once

#include <fiscal/fiscalrecord.h>

#include <basixcore/fixnumber.h>

#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <QVector>
#include <QtGlobal>

/// What a registered receipt still says about the payment it was printed for: the lines meant for
/// the paper, the items and the number it was handed in under.
struct ReceiptOrigin
{
    enum class Payer { Unknown, Individual, Legal };

    struct Item
    {
        /// Empty for an advance that belongs to no service.
        QString name;
        qint64 cost = 0;
    };
    struct Reading
    {
        QString meter;
        qint64 last = 0;
        qint64 current = 0;
    };

    Payer payer = Payer::Unknown;
    /// Account or contract.
    QString account;
    QString period;
    QStringList documents;
    QVector<Item> items;
    QVector<Reading> readings;
    basix::FixNumber total;
    basix::FixNumber cash;
    basix::FixNumber cashless;

    static ReceiptOrigin of(const FiscalRecord &receipt);
};
