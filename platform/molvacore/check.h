#pragma once

#include <molvacore/basecheck.h>
#include <molvacore/checkadditionalparameter.h>
#include <molvacore/molvacore_global.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>
#include <QVariantMap>

/// A receipt of a settlement with a buyer.
class MOLVACORE_EXPORT Check : public BaseCheck
{
public:
    Check();
    Check(const Check &other);
    Check &operator=(const Check &other);
    ~Check();

    CheckAdditionalParameter additionalUserParameter() const;
    void setAdditionalUserParameter(const CheckAdditionalParameter &parameter);
    /// Where the electronic receipt goes: a phone or an e-mail.
    QString clientPhone() const;
    void setClientPhone(const QString &clientPhone);
    QString buyer() const;
    void setBuyer(const QString &buyer);
    QString buyerInn() const;
    void setBuyerInn(const QString &buyerInn);

    /// The document that FrHandler::doReceipt() takes. Keys are tag numbers in decimal
    /// (FiscalTag::key()); sums are kopecks as qint64; enumerations are int; a tag whose value is
    /// empty is left out.
    ///
    /// | Key | Value |
    /// |---|---|
    /// | "1054", "1055" | int: settlement sign, tax system |
    /// | "1059" | list of lines, see below; always there |
    /// | "1020" | total: the sum of the lines' "1043"; always there |
    /// | "1031", "1081" | paid in cash, paid without cash; always there, 0 for nothing |
    /// | "1008" | contact: an e-mail as it is, a phone as "+" and digits |
    /// | "1018", "1228" | taxpayer numbers of the register's owner and of the buyer, see below |
    /// | "1021", "1037", "1227" | text: cashier, registration number, buyer |
    /// | "1084" | map of "1085" and "1086" |
    /// | "electronic" | bool: `electronicOnly`, nothing goes to paper |
    /// | "checkType" | int: CheckType |
    /// | "printable" | string list: lines for the paper; only with `withPrintableData` |
    ///
    /// A line: "1030" text, "1079" price, "1023" quantity as text with all decimals ("1.000"),
    /// "1043" cost, "1199" int, "1212" int, "1214" int, "1222" int (only when not 0), "1226"
    /// taxpayer number padded to 12, "1223" map of texts ("1044", "1005", "1016" padded, "1026")
    /// and lists of phones ("1073", "1074", "1075"), "1224" map of "1225" text and "1171" list of
    /// phones.
    ///
    /// The field of a taxpayer number is 12 characters wide: 10 digits are padded with blanks.
    ///
    /// Payments of a single kopeck are no payment records of their own, so up to two kopecks of the
    /// total may be left over by payments(); they go to `defaultMoneyType`. A larger difference, or
    /// payments above the total, stay as they are: the register refuses such a document, and must.
    QVariantMap toDocument(bool electronicOnly, MoneyType defaultMoneyType,
                           bool withPrintableData) const;

    bool operator==(const Check &other) const;
    bool operator!=(const Check &other) const { return !(*this == other); }

private:
    class Data;
    QSharedDataPointer<Data> m_data;
};

Q_DECLARE_METATYPE(Check)
