#pragma once

#include <QString>
#include <QVector>

/// Answers that a healthy billing service never gives, as texts with "UID" in the place of the
/// request's uid.
namespace HostileAnswers {

struct Row
{
    const char *name;
    QString text;
    /// The uid can be read, so the wait is over; what the page shows then is not said here.
    bool matched;
};

QVector<Row> all();

} // namespace HostileAnswers
