#!/usr/bin/env bash
# Runs whole payments of the terminal under valgrind's memcheck: no invalid read or write, no use of a value that was never
# set, nothing definitely lost. It takes some thirty times as long as without.
#
#   scripts/memcheck.sh                                both demos
#   scripts/memcheck.sh scenarios/card-declined.scenario ...      these scenarios
#
# Reports stay in build/memcheck/. What is not ours to repair stands with its reason in cmake/memcheck.supp.
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

ensure_packages "${SELMAR_BUILD_PACKAGES[@]}" "${SELMAR_TEST_PACKAGES[@]}" "${SELMAR_ANALYSIS_PACKAGES[@]}"
build=${SELMAR_BUILD:-$root/build/debug}
if [ -z "${SELMAR_BUILD:-}" ]; then
    build_preset debug selmar_terminal selmarrivenhold >&2
fi

reports="$root/build/memcheck"
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
mkdir -p "$reports"
export HOME="$home" XDG_RUNTIME_DIR="$home" LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
# Machine code that Qt's regular expressions make at run time is none that valgrind can follow.
export QT_ENABLE_REGEXP_JIT=0

bad=0
check() {
    local name=$1 log="$reports/$1.txt"
    shift
    if valgrind --quiet --error-exitcode=9 --exit-on-first-error=no --num-callers=30 \
        --leak-check=full --show-leak-kinds=definite --errors-for-leak-kinds=definite \
        --suppressions="$root/cmake/memcheck.supp" --log-file="$log" \
        "$build/bin/selmar-terminal" "$@" >"$reports/$name.out" 2>&1
    then
        echo "$name: clean"
    else
        echo "$name: ended with $?, see $log"
        head -40 "$log"
        bad=1
    fi
}

if [ "$#" -eq 0 ]; then
    check demo-individual --demo individual
    check demo-legal --demo legal
fi
for scenario in "$@"; do
    check "$(basename "$scenario" .scenario)" --scenario "$scenario"
done
exit "$bad"
