#!/usr/bin/env bash
# Kills a working station N times at random moments and checks that no payment was lost or doubled; then every fault point.
#
#     scripts/faults.sh [N] [SEED]          200 kills without N; SEED repeats the moments of an earlier run
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
. "$root/scripts/build.sh"

kills=${1:-200}
[[ "$kills" =~ ^[1-9][0-9]*$ ]] || { echo "Сколько раз убивать: целое число больше нуля, а не «$kills»." >&2; exit 2; }
build=${SELMAR_BUILD:-$root/build/debug}
if [ -z "${SELMAR_BUILD:-}" ]; then
    build_preset debug tst_randomkills tst_faultpoints
fi

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME="$home" XDG_RUNTIME_DIR="$home" LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
# QtTest ends a test function after five minutes unless it is told how long a long one takes.
export QTEST_FUNCTION_TIMEOUT=$((kills * 20000 + 300000)) SELMAR_KILLS="$kills"
if [ -n "${2:-}" ]; then
    export SELMAR_KILL_SEED="$2"
fi
started=$SECONDS
"$build/tests/tst_randomkills"
"$build/tests/tst_faultpoints" | tail -2
echo "seconds                        $((SECONDS - started))"
