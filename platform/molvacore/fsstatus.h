#pragma once

#include <molvacore/molvacore_global.h>

#include <QMetaType>

/// State of the fiscal storage as the register reports it.
class MOLVACORE_EXPORT FsStatus
{
public:
    FsStatus() = default;
    explicit FsStatus(bool readyForReceipts);

    /// A receipt can be made now.
    bool readyForReceipts() const { return m_readyForReceipts; }
    void setReadyForReceipts(bool ready) { m_readyForReceipts = ready; }

    friend bool operator==(const FsStatus &a, const FsStatus &b)
    {
        return a.m_readyForReceipts == b.m_readyForReceipts;
    }
    friend bool operator!=(const FsStatus &a, const FsStatus &b) { return !(a == b); }

private:
    bool m_readyForReceipts = false;
};

Q_DECLARE_METATYPE(FsStatus)
