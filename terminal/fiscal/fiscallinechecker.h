#pragma once

#include <QVariantMap>
#include <QtGlobal>

class FiscalFindings;

/// Checks one line (tag 1059) of a receipt.
class FiscalLineChecker final
{
public:
    /// `number` counts lines from 1, for the texts.
    FiscalLineChecker(const QVariantMap &line, int number);

    void check(FiscalFindings *found);
    /// Tag 1043 in kopecks; 0 when it cannot be read.
    qint64 cost() const { return m_cost; }

private:
    void checkName(FiscalFindings *found) const;
    void checkArithmetic(FiscalFindings *found);
    void checkAgent(FiscalFindings *found) const;
    void checkPaymentAgent(FiscalFindings *found) const;
    void checkBankAgent(FiscalFindings *found) const;
    bool has(int tag) const;
    int number(int tag) const;

    QVariantMap m_line;
    int m_number = 0;
    qint64 m_cost = 0;
};
