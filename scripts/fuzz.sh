#!/usr/bin/env bash
# Looks for inputs that break a property of fuzz/targets/, with clang's fuzzing engine and the address and
# undefined-behaviour sanitizers.
#
#   scripts/fuzz.sh                      every target, 60 seconds each
#   scripts/fuzz.sh 600                  every target, 600 seconds each
#   scripts/fuzz.sh 600 pay_pack ...     only these targets
#
# New inputs stay in build/fuzz/corpus/TARGET, and the next run goes on from them. What broke a property stays in
# build/fuzz/findings/TARGET and its report in build/fuzz/log/TARGET.txt; the run then ends with 1. To look at one:
#   SELMAR_FUZZ_TARGET=TARGET build/fuzz/bin/selmar_fuzz FILE       with the sanitizers
#   build/debug/bin/selmar_fuzz TARGET FILE                         in a debugger
# A finding that is fixed becomes a seed: copy the file to fuzz/seeds/TARGET/ under the name of the case.
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

seconds=${1:-60}
[ "$#" -gt 0 ] && shift
if ! [[ $seconds =~ ^[1-9][0-9]*$ ]]; then
    echo "Первый аргумент — секунды на одну цель, а не «$seconds»." >&2
    exit 2
fi

ensure_packages "${SELMAR_BUILD_PACKAGES[@]}" "${SELMAR_TEST_PACKAGES[@]}" "${SELMAR_FUZZ_PACKAGES[@]}"
build_preset fuzz selmar_fuzz >&2

work="$root/build/fuzz"
binary="$work/bin/selmar_fuzz"
targets=("$@")
if [ "${#targets[@]}" -eq 0 ]; then
    mapfile -t targets < <(cd "$root/fuzz/targets" && ls -- *.cpp | sed 's/\.cpp$//')
fi

# The engine ends without cleaning up, and every target keeps a database of its own.
mkdir -p "$work/log" "$work/tmp"
export TMPDIR="$work/tmp"
trap 'rm -rf "$work/tmp"' EXIT
# Qt's JSON reader leaks when a key is repeated and its first value is an object, so leaks are not looked for here (the tests
# do, under the preset asan-ubsan), and the memory limit below leaves room for them.
export ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1

number() { sed -n "s/^stat::$1: *//p" "$2" | tail -1; }

found=0
printf '%-20s %12s %10s %8s %8s %8s %8s\n' target executions exec/s edges new rss_MB crashes
for target in "${targets[@]}"; do
    if [ ! -d "$root/fuzz/seeds/$target" ]; then
        echo "Цели «$target» нет; есть: $(ls "$root/fuzz/seeds" | tr '\n' ' ')" >&2
        exit 2
    fi
    corpus="$work/corpus/$target" findings="$work/findings/$target" log="$work/log/$target.txt"
    mkdir -p "$corpus" "$findings"
    before=$(find "$findings" -type f | wc -l)
    options=(-max_total_time="$seconds" -max_len=65536 -timeout=10 -rss_limit_mb=4096
             -print_final_stats=1 -artifact_prefix="$findings/")
    dictionary="$root/fuzz/dictionaries/$target.dict"
    [ -f "$dictionary" ] && options+=(-dict="$dictionary")
    SELMAR_FUZZ_TARGET=$target "$binary" "${options[@]}" "$corpus" "$root/fuzz/seeds/$target" >"$log" 2>&1 || true

    crashes=$(($(find "$findings" -type f | wc -l) - before))
    executions=$(number number_of_executed_units "$log")
    edges=$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -1)
    printf '%-20s %12s %10s %8s %8s %8s %8s\n' "$target" "${executions:--}" "$(number average_exec_per_sec "$log")" \
        "${edges:--}" "$(number new_units_added "$log")" "$(number peak_rss_mb "$log")" "$crashes"
    # A run that never started has found nothing and proved nothing.
    if [ "$crashes" -gt 0 ] || [ -z "$executions" ]; then
        found=1
        grep -m 3 -E 'property violated|ERROR|runtime error|Assertion' "$log" | sed 's/^/    /' || tail -3 "$log"
    fi
done
exit "$found"
