#!/usr/bin/env bash
# Measures every row beside its floor and prints the table; the ratios go to build/bench/ratios.json. Further arguments go to
# the benchmark (scripts/bench.sh --rows receipt, scripts/bench.sh --help).
#
#   scripts/bench.sh --curves      draws docs/pictures/growth/ anew instead
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

ensure_packages "${SELMAR_BUILD_PACKAGES[@]}" "${SELMAR_BENCH_PACKAGES[@]}"
build_preset bench selmar_bench selmar_bench_curves
if [ "${1:-}" = --curves ]; then
    shift
    exec "$root/build/bench/bin/selmar_bench_curves" "$@" "$root/docs/pictures/growth"
fi
exec "$root/build/bench/bin/selmar_bench" --json "$root/build/bench/ratios.json" "$@"
