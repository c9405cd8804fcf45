#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QList>
#include <QString>
#include <QStringList>

/// The command line of a program, by the same rules in each of ours.
///
/// A mistake in it ends the program with code 2 and a Russian text that names the way to the help;
/// --help and --version end it with 0. Needs the application for its name and version.
class ProgramOptions final
{
public:
    /// `description`: what the program is for, in Russian. `arguments` begin with its name.
    ProgramOptions(const QString &description, const QList<QCommandLineOption> &options,
                   const QStringList &arguments);

    bool isSet(const QCommandLineOption &option) const { return m_parser.isSet(option); }
    bool isSet(const QString &name) const { return m_parser.isSet(name); }
    /// The option's default where it was not given.
    QString value(const QCommandLineOption &option) const { return m_parser.value(option); }
    QString value(const QString &name) const { return m_parser.value(name); }

    [[noreturn]] static void refuse(const QString &text);

private:
    QCommandLineParser m_parser;
};
