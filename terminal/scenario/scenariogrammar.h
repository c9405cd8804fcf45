#pragma once

#include <scenario/scenariocommand.h>

/// The phrases that a scenario consists of.
///
/// A pattern is words divided by blanks. "{текст}", "{число}", "{сумма}" and "{имя}" stand for an
/// argument of that kind, every other word for itself.
namespace ScenarioGrammar {

struct Phrase
{
    QString pattern;
    ScenarioCommand::Verb verb;
    /// Arguments that the phrase itself means; they come before those that are written.
    QStringList meant;
};

const QVector<Phrase> &phrases();

/// Whether `word` may stand where the pattern has `part`; only a text may be quoted.
bool matches(const QString &part, const QString &word, bool quoted);
/// What a person is told to write there.
QString describe(const QString &part);
/// The known word nearest to `word`, or nothing when none is near.
QString nearest(const QString &word, const QStringList &known);

} // namespace ScenarioGrammar
