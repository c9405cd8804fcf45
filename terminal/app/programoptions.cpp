#include <app/programoptions.h>

#include <app/optionvalues.h>

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

ProgramOptions::ProgramOptions(const QString &description, const QList<QCommandLineOption> &options,
                               const QStringList &arguments)
{
    m_parser.setApplicationDescription(description);
    const QCommandLineOption help = m_parser.addHelpOption();
    const QCommandLineOption version = m_parser.addVersionOption();
    m_parser.addOptions(options);
    const QString missing = missingOptionValue(options + QList{help, version}, arguments);
    if (!missing.isEmpty())
        refuse(missing);
    if (!m_parser.parse(arguments))
        refuse(m_parser.errorText());
    if (isSet(help))
        m_parser.showHelp();
    if (isSet(version))
        m_parser.showVersion();
    if (!m_parser.positionalArguments().isEmpty())
        refuse(
            QStringLiteral("Лишнее слово: «%1».").arg(m_parser.positionalArguments().constFirst()));
}

void ProgramOptions::refuse(const QString &text)
{
    std::fprintf(stderr, "%s\nСправка: %s --help\n", qUtf8Printable(text),
                 qUtf8Printable(QCoreApplication::applicationName()));
    std::exit(2);
}
