#pragma once

#include <bills/codeencoding.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/// The payment code of a bill, GOST R 56042-2014: named fields, and the bytes that go into its
/// picture.
///
/// The mandatory block (Name, PersonalAcc, BankName, BIC, CorrespAcc) is written first and in this
/// order whatever the order of setting; other fields follow as they were set.
class PaymentCode
{
public:
    struct Field
    {
        QString name;
        QString value;

        friend bool operator==(const Field &a, const Field &b)
        {
            return a.name == b.name && a.value == b.value;
        }
    };

    /// Bytes that a code of the largest size holds at error correction level M, the one of bills.
    static constexpr int MAXIMUM_BYTES = 2331;

    /// Replaces a field of this name. An empty value takes the field out.
    void setField(const QString &name, const QString &value);
    /// Empty when there is no such field.
    QString field(const QString &name) const;
    QVector<Field> fields() const;

    /// Nothing: "|", or the first other sign that no value holds. The standard knows no escaping.
    void setSeparator(std::optional<QChar> separator) { m_separator = separator; }

    /// What keeps the code from being written, in Russian; empty when all is well.
    QStringList problems(CodeEncoding encoding) const;
    /// Empty when there are problems.
    QByteArray toBytes(CodeEncoding encoding) const;
    /// The text of the code; what a scanner types.
    QString toText(CodeEncoding encoding) const;

    friend bool operator==(const PaymentCode &a, const PaymentCode &b)
    {
        return a.fields() == b.fields() && a.m_separator == b.m_separator;
    }
    friend bool operator!=(const PaymentCode &a, const PaymentCode &b) { return !(a == b); }

private:
    std::optional<QChar> usableSeparator() const;

    QVector<Field> m_fields;
    std::optional<QChar> m_separator;
};
