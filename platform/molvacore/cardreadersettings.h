#pragma once

#include <molvacore/molvacore_global.h>

#include <QMetaType>
#include <QString>

/// Settings of the card terminal, read from the host's database on construction; type 0 when there
/// are none.
class MOLVACORE_EXPORT CardReaderSettings
{
public:
    enum Type { None = 0, IngericoLib = 1, SberPosLib = 2, QEftPos = 3 };

    CardReaderSettings();

    /// A terminal of some type is set up, known here or not.
    bool configured() const { return m_type != None; }
    int type() const { return m_type; }
    void setType(int type) { m_type = type; }

    /// What the emulated terminals do whatever the amount: a name of PosTestOutcome. Empty leaves
    /// the outcome to the amount (PosTestAmount).
    QString outcome() const { return m_outcome; }
    void setOutcome(const QString &outcome) { m_outcome = outcome; }

    /// Stores the settings; objects made earlier keep what they read.
    bool save();

    friend bool operator==(const CardReaderSettings &a, const CardReaderSettings &b)
    {
        return a.m_type == b.m_type && a.m_outcome == b.m_outcome;
    }
    friend bool operator!=(const CardReaderSettings &a, const CardReaderSettings &b)
    {
        return !(a == b);
    }

private:
    int m_type = None;
    QString m_outcome;
};

Q_DECLARE_METATYPE(CardReaderSettings)
