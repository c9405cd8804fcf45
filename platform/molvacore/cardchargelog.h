#pragma once

#include <molvacore/molvacore_global.h>

#include <basixcore/fixnumber.h>

#include <QDateTime>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QVector>

/// One charge of a card by an emulated terminal.
struct CardCharge
{
    QDateTime time;
    basix::FixNumber amount;
    QString terminal; ///< number of the terminal
    QString rrn;      ///< reference number, 12 digits
    QString authCode; ///< 6 digits
    /// False: the card was charged, but the caller was told that the outcome is unknown.
    bool answered = true;
};

Q_DECLARE_METATYPE(CardCharge)

/// All charges that the emulated terminals of this process made, in order: the bank's side of the
/// story. Thread-safe.
class MOLVACORE_EXPORT CardChargeLog : public QObject
{
    Q_OBJECT

public:
    /// The one log of the process, for connecting to charged().
    static CardChargeLog *instance();
    static QVector<CardCharge> charges();
    /// Sum of all charges, answered or not.
    static basix::FixNumber total();
    static void clear();

    /// For the terminals: notes the charge and announces it.
    static void append(const CardCharge &charge);

signals:
    /// Emitted in the thread that charged, after the charge is in the list.
    void charged(const CardCharge &charge);
};
