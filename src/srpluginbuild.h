#pragma once

#include <QString>

/// Renders a build moment in ISO 8601.
///
/// `date` is "Mar  5 2023" (English month, day padded with a blank), `time` is "10:00:00", as
/// compilers give them. The result is "2023-03-05T10:00:00"; empty when the two texts are no date
/// and time.
QString srBuildMoment(const QString &date, const QString &time);

/// The moment at which this plugin was compiled, in ISO 8601.
QString srPluginBuild();
