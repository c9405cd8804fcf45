#pragma once

#include <scenario/scenariocommand.h>

#include <QByteArray>
#include <QString>

/// Reads the text of a scenario: one phrase a line, "#" begins a comment, texts with blanks stand
/// in quotation marks ("..." or «...»). The first mistake ends the reading.
class ScenarioParser final
{
public:
    /// False: error(), line() and column() (both counted from one) say what is wrong.
    bool parseFile(const QString &fileName);
    bool parse(const QByteArray &utf8);

    ScenarioCommands commands() const { return m_commands; }
    QString error() const { return m_error; }
    int line() const { return m_line; }
    int column() const { return m_column; }

private:
    struct Word
    {
        QString text;
        int column = 1;
        bool quoted = false;
    };

    bool parseLine(const QString &line);
    bool split(const QString &line, QVector<Word> &words);
    bool understand(const QVector<Word> &words, const QString &line);
    bool fail(int column, const QString &error);

    ScenarioCommands m_commands;
    QString m_error;
    int m_line = 0;
    int m_column = 0;
};
