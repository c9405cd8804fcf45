#!/usr/bin/env bash
# Reads the code with clang-tidy and clazy, which know faults that a compiler does not look for; any finding ends it with 1.
#
#   scripts/analyse.sh                   everything of our own
#   scripts/analyse.sh src terminal/bus  only what lies below these folders, or these files
#   scripts/analyse.sh --again src       also what has been read and has not changed since
#
# What is wanted and what is left out, with the reasons: .clang-tidy, bench/.clang-tidy, and for clazy
# tools/analysis/analyse.py. Nothing is compiled to the end; about two seconds of a processor a source. JOBS=1 leaves one
# processor to others.
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
. "$root/scripts/packages.sh"

ensure_packages "${SELMAR_BUILD_PACKAGES[@]}" "${SELMAR_TEST_PACKAGES[@]}" "${SELMAR_BENCH_PACKAGES[@]}" \
    "${SELMAR_ANALYSIS_PACKAGES[@]}"
build=$root/build/analysis
mkdir -p "$build"
(cd "$root" && cmake --preset analysis >"$build/configure.log") || { cat "$build/configure.log" >&2; exit 3; }
# The sources include what moc and uic make. Their targets would build the libraries first, which nobody needs here.
find "$build" -name AutogenInfo.json -print0 |
    xargs -0 -n 1 -P "$(nproc)" sh -c 'cmake -E cmake_autogen "$0" Debug >/dev/null'
exec "$root/tools/analysis/analyse.py" --build "$build" --jobs "${JOBS:-$(nproc)}" "$@"
