#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/// A property that holds for every input. It never throws; a violation ends the program.
struct FuzzTarget
{
    using Run = void (*)(const QByteArray &input);

    const char *name = nullptr;
    Run run = nullptr;
};

/// The targets of this binary. Each registers itself with FUZZ_TARGET in a source of its own, named
/// after it; its seeds are in seeds/NAME/, its dictionary, if it has one, in
/// dictionaries/NAME.dict.
namespace FuzzTargets {

/// Called by FUZZ_TARGET while the program loads.
bool add(const char *name, FuzzTarget::Run run);
/// In alphabetical order.
QVector<FuzzTarget> all();
/// `run` is null when there is no such target.
FuzzTarget find(const QByteArray &name);

/// What every target needs before it runs: the program's object and a silent log. Call it once.
void prepare(int &argc, char **argv);
/// Says what is wrong, with the source line that found it, and aborts, so that the engine or the
/// replay keeps the input.
[[noreturn]] void violated(const char *file, int line, const QString &what);

} // namespace FuzzTargets

#define FUZZ_TARGET(name)                                                                          \
    static void fuzz_##name(const QByteArray &input);                                              \
    [[maybe_unused]] static const bool added_##name = FuzzTargets::add(#name, &fuzz_##name);       \
    static void fuzz_##name(const QByteArray &input)

/// `what` is evaluated only when the condition is false.
#define FUZZ_REQUIRE(condition, what)                                                              \
    do {                                                                                           \
        if (!(condition))                                                                          \
            FuzzTargets::violated(__FILE__, __LINE__, what);                                       \
    } while (false)
