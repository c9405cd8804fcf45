#pragma once

#include <rapidcheck.h>

#include <QByteArray>
#include <QTest>

/// Checks that a property holds for everything that the generators of its parameters make up.
///
/// The values are the same on every run. What fails is shrunk to a small counterexample and printed
/// with the line RC_PARAMS="reproduce=..."; that line in the environment runs only it. Other
/// values: RC_PARAMS="seed=7 max_success=100000".
#define CHECK_PROPERTY(name, ...)                                                                  \
    do {                                                                                           \
        Property::fixSeed();                                                                       \
        const Property::SilentLog silent;                                                          \
        QVERIFY2(rc::check(name, __VA_ARGS__), "the counterexample is printed above");             \
    } while (false)

namespace Property {

/// Has an effect before the first property of a program only.
inline void fixSeed()
{
    if (qEnvironmentVariableIsEmpty("RC_PARAMS"))
        qputenv("RC_PARAMS", QByteArrayLiteral("seed=54 max_success=2000"));
}

/// The plugin logs every record that it reads, and a property reads thousands.
class SilentLog
{
public:
    SilentLog() : m_previous(qInstallMessageHandler(&SilentLog::drop)) {}
    ~SilentLog() { qInstallMessageHandler(m_previous); }
    SilentLog(const SilentLog &) = delete;
    SilentLog &operator=(const SilentLog &) = delete;

private:
    static void drop(QtMsgType, const QMessageLogContext &, const QString &) {}

    QtMessageHandler m_previous;
};

} // namespace Property
