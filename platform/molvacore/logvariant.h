#pragma once

#include <molvacore/molvacore_global.h>

#include <QDebug>
#include <QString>
#include <QVariant>

/// A variant on its way into a log stream: `qWarning() << logvariant(list)`.
///
/// Maps and lists come out on one line in the manner of JSON, keys in order; texts inside them are
/// quoted with their control characters escaped, so one value is one line. A text by itself is not
/// quoted.
class MOLVACORE_EXPORT LogVariant
{
public:
    explicit LogVariant(const QVariant &value);

    QString toString() const;

private:
    QVariant m_value;
};

MOLVACORE_EXPORT LogVariant logvariant(const QVariant &value);
MOLVACORE_EXPORT QDebug operator<<(QDebug debug, const LogVariant &value);
