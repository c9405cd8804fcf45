// The entry points of the fuzzing engine. The engine owns the command line, so the target is chosen
// by the environment variable SELMAR_FUZZ_TARGET.
#include "fuzztarget.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

FuzzTarget::Run chosen = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    FuzzTargets::prepare(*argc, *argv);
    const QByteArray name = qgetenv("SELMAR_FUZZ_TARGET");
    chosen = FuzzTargets::find(name).run;
    if (chosen)
        return 0;
    std::fprintf(stderr, "Set SELMAR_FUZZ_TARGET to one of:\n");
    for (const FuzzTarget &target : FuzzTargets::all())
        std::fprintf(stderr, "  %s\n", target.name);
    std::exit(2);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    chosen(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    return 0;
}
