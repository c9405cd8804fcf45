#pragma once

#include <molvacore/molvacore_global.h>

#include <QMetaType>
#include <QString>

/// Settings of the fiscal register, read from the host's database on construction; empty when there
/// are none.
class MOLVACORE_EXPORT FrSettings
{
public:
    FrSettings();

    /// Taxpayer number of the owner of the register (tag 1018).
    QString cashboxInn() const { return m_cashboxInn; }
    void setCashboxInn(const QString &inn) { m_cashboxInn = inn; }
    /// Registration number of the register (tag 1037).
    QString cashboxRegNumber() const { return m_cashboxRegNumber; }
    void setCashboxRegNumber(const QString &number) { m_cashboxRegNumber = number; }

    /// Stores the settings; objects made earlier keep what they read.
    bool save();

    friend bool operator==(const FrSettings &a, const FrSettings &b)
    {
        return a.m_cashboxInn == b.m_cashboxInn && a.m_cashboxRegNumber == b.m_cashboxRegNumber;
    }
    friend bool operator!=(const FrSettings &a, const FrSettings &b) { return !(a == b); }

private:
    QString m_cashboxInn;
    QString m_cashboxRegNumber;
};

Q_DECLARE_METATYPE(FrSettings)
