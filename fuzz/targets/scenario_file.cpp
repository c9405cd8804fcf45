// The text of a scenario file, as a person writes and saves it.
#include "fuzztarget.h"

#include <scenario/roubles.h>
#include <scenario/scenarioparser.h>

#include <QRegularExpression>

namespace {

bool sameMeaning(const ScenarioCommand &a, const ScenarioCommand &b)
{
    return a.verb == b.verb && a.arguments == b.arguments && a.text == b.text;
}

/// A step stands for its own line and for nothing around it.
void checkStep(const ScenarioCommand &command, const QStringList &lines)
{
    FUZZ_REQUIRE(command.line >= 1 && command.line <= lines.size(),
                 QStringLiteral("a step of no line: %1").arg(QString::number(command.line)));
    FUZZ_REQUIRE(lines.at(command.line - 1).trimmed() == command.text,
                 QStringLiteral("a step of another line: %1").arg(command.text));

    ScenarioParser alone;
    FUZZ_REQUIRE(alone.parse(command.text.toUtf8()) && alone.commands().size() == 1
                     && sameMeaning(alone.commands().constFirst(), command),
                 QStringLiteral("a line means something else by itself: %1").arg(command.text));
}

/// To the kopeck, with a point or a comma, with one decimal or two.
void checkAmount(const QString &written)
{
    static const QRegularExpression form(QStringLiteral("\\A(\\d{1,9})(?:[.,](\\d{1,2}))?\\z"));
    const QRegularExpressionMatch match = form.match(written);
    if (!match.hasMatch())
        return;
    const QString hundredths = match.captured(2).leftJustified(2, QLatin1Char('0'));
    const qint64 kopecks = Roubles::kopecks(written);
    FUZZ_REQUIRE(kopecks == (match.captured(1) + hundredths).toLongLong(),
                 QStringLiteral("%1 read as %2").arg(written, QString::number(kopecks)));
    FUZZ_REQUIRE(Roubles::kopecks(Roubles::text(kopecks)) == kopecks,
                 QStringLiteral("%1 written as %2").arg(written, Roubles::text(kopecks)));
}

void checkRefusal(const ScenarioParser &parser, const QStringList &lines)
{
    FUZZ_REQUIRE(!parser.error().isEmpty(), QStringLiteral("refused without a reason"));
    FUZZ_REQUIRE(parser.line() >= 0 && parser.line() <= lines.size(),
                 QStringLiteral("refused for a line that is not there"));
    if (parser.line() == 0)
        return; // the file as a whole
    const QString &line = lines.at(parser.line() - 1);
    FUZZ_REQUIRE(
        parser.column() >= 1 && parser.column() <= line.size() + 1,
        QStringLiteral("refused at column %1 of: %2").arg(QString::number(parser.column()), line));
}

} // namespace

FUZZ_TARGET(scenario_file)
{
    ScenarioParser parser;
    const bool understood = parser.parse(input);
    // Like the parser: a mark of the byte order is not part of the text, a null character is.
    QString text = QString::fromUtf8(input.constData(), input.size());
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    const QStringList lines = text.split(QLatin1Char('\n'));
    if (!understood) {
        checkRefusal(parser, lines);
        return;
    }
    FUZZ_REQUIRE(!parser.commands().isEmpty(), QStringLiteral("a scenario without a step"));
    int last = 0;
    const ScenarioCommands commands = parser.commands();
    for (const ScenarioCommand &command : commands) {
        FUZZ_REQUIRE(command.line > last, QStringLiteral("steps out of their order"));
        last = command.line;
        checkStep(command, lines);
        for (const QString &argument : command.arguments)
            checkAmount(argument);
    }
}
