#pragma once

#include <billing/billingrecords.h>
#include <bills/paymentcode.h>

#include <QDate>
#include <QString>
#include <QVector>

#include <optional>

/// A bill of the utility, ready to be printed. Money is whole kopecks.
class Bill
{
public:
    struct Line
    {
        QString name;
        qint64 charge = 0;
        /// What was owed before this charge; negative for an overpayment.
        qint64 debt = 0;
        qint64 topay = 0;
    };
    struct Meter
    {
        QString name;
        qint64 lastValue = 0;
    };
    /// What the code says besides what billing knows.
    struct Wish
    {
        QDate period; ///< any day of the month
        /// Kopecks; nothing: what is due, and no sum in the code when nothing is.
        std::optional<qint64> sum;
        /// The cashier types the sum: the code has none whatever is due.
        bool withoutSum = false;
    };

    static Bill forPerson(const BillingAccount &account, const Wish &wish);
    /// `document` is one of the contract's.
    static Bill forDocument(const BillingAccount &contract, const BillingDocument &document,
                            const Wish &wish);

    bool isLegal() const { return m_legal; }
    QString title() const;
    /// Account or contract.
    QString number() const { return m_number; }
    QString documentNumber() const { return m_document; }
    QString payer() const { return m_payer; }
    QString address() const { return m_address; }
    QString inn() const { return m_inn; }
    /// "октябрь 2026".
    QString periodText() const;
    QVector<Line> lines() const { return m_lines; }
    QVector<Meter> meters() const { return m_meters; }
    qint64 total() const { return m_total; }
    /// Fields as they go into the code. A set of single bytes lacks some signs that names of firms
    /// are written with, such as «» and №: those are replaced as a typewriter would.
    PaymentCode code(CodeEncoding encoding) const;

    /// The payee of every bill: field of the code and value.
    static QVector<PaymentCode::Field> payee();

private:
    bool m_legal = false;
    QString m_number;
    QString m_document;
    QString m_payer;
    QString m_address;
    QString m_inn;
    QDate m_period;
    QVector<Line> m_lines;
    QVector<Meter> m_meters;
    qint64 m_total = 0;
    qint64 m_codeSum = 0; ///< 0: none
};
