#pragma once

#include <molvacore/postestamount.h>

#include <basixcore/fixnumber.h>

#include <QString>
#include <QStringList>

struct CardCharge;

/// The emulated terminal behind every PosHandler here. Its outcomes are those of PosTestAmount and
/// CardReaderSettings.
class PosEmulator
{
public:
    /// `heading` is the first line of its slips, `terminal` its number of eight digits.
    PosEmulator(const QString &heading, const QString &terminal);

    /// Reads the forced outcome anew.
    bool init(QString &error);
    bool pay(const basix::FixNumber &amount, QString &error, QStringList &slip);

private:
    PosTestAmount outcomeFor(qint64 kopecks) const;
    /// Why a failure is simulated: the forced outcome or the digits of the amount.
    QString hint(int digits) const;
    CardCharge charge(const basix::FixNumber &amount, bool answered) const;
    QStringList slipOf(const CardCharge &charge) const;

    QString m_heading;
    QString m_terminal;
    QString m_forced;
    bool m_ready = false;
};
