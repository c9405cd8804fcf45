#include "fuzztarget.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

QVector<FuzzTarget> &registered()
{
    static QVector<FuzzTarget> targets;
    return targets;
}

/// The plugin logs every record that it reads: at thousands of executions a second nobody can read
/// that, but its text is still composed, so the composing is tested too.
void dropMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type != QtFatalMsg)
        return;
    std::fprintf(stderr, "%s\n", qUtf8Printable(text));
    std::abort();
}

} // namespace

bool FuzzTargets::add(const char *name, FuzzTarget::Run run)
{
    registered().append({name, run});
    return true;
}

QVector<FuzzTarget> FuzzTargets::all()
{
    QVector<FuzzTarget> targets = registered();
    std::sort(targets.begin(), targets.end(),
              [](const FuzzTarget &a, const FuzzTarget &b) { return qstrcmp(a.name, b.name) < 0; });
    return targets;
}

FuzzTarget FuzzTargets::find(const QByteArray &name)
{
    const QVector<FuzzTarget> &targets = registered();
    for (const FuzzTarget &target : targets) {
        if (name == target.name)
            return target;
    }
    return {};
}

void FuzzTargets::prepare(int &argc, char **argv)
{
    static QCoreApplication application(argc, argv);
    qInstallMessageHandler(&dropMessage);
}

void FuzzTargets::violated(const char *file, int line, const QString &what)
{
    std::fprintf(stderr, "%s:%d: property violated: %s\n", file, line, qUtf8Printable(what));
    std::abort();
}
