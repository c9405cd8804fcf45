#pragma once

#include <basixcore/basixcore_global.h>

#include <QMetaType>
#include <QString>

namespace basix {

/// A currency of ISO 4217: number 643, code "RUB", and the name that people see.
class BASIXCORE_EXPORT Currency
{
public:
    /// No currency: number 0, empty texts.
    Currency() = default;
    Currency(int number3, const QString &code3, const QString &name);

    int number3() const { return m_number3; }
    void setNumber3(int number3) { m_number3 = number3; }
    QString code3() const { return m_code3; }
    void setCode3(const QString &code3) { m_code3 = code3; }
    QString name() const { return m_name; }
    void setName(const QString &name) { m_name = name; }

    friend bool operator==(const Currency &a, const Currency &b)
    {
        return a.m_number3 == b.m_number3 && a.m_code3 == b.m_code3 && a.m_name == b.m_name;
    }
    friend bool operator!=(const Currency &a, const Currency &b) { return !(a == b); }

private:
    int m_number3 = 0;
    QString m_code3;
    QString m_name;
};

} // namespace basix

Q_DECLARE_METATYPE(basix::Currency)
