#!/usr/bin/env bash
# The long run of the fault tests: N kills of a working station, N of a station and of a worker on both sides of a broker, a
# tenth of that of the broker and of one of its three nodes; power cuts; every fault point; full and read-only storage. After
# each of them charges, receipts, packs and billing must agree.
#
#     scripts/faults.sh [N] [SEED]          200 kills without N; SEED repeats the moments of an earlier run
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

kills=${1:-200}
[[ "$kills" =~ ^[1-9][0-9]*$ ]] || { echo "Сколько раз убивать: целое число больше нуля, а не «$kills»." >&2; exit 2; }
build=${SELMAR_BUILD:-$root/build/debug}
tests=(tst_randomkills tst_brokerkills tst_powercut tst_faultpoints tst_fullstorage)
if [ -z "${SELMAR_BUILD:-}" ]; then
    ensure_packages "${SELMAR_BUILD_PACKAGES[@]}" "${SELMAR_TEST_PACKAGES[@]}"
    build_preset debug "${tests[@]}"
fi

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME="$home" XDG_RUNTIME_DIR="$home" LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
# QtTest ends a test function after five minutes unless it is told how long a long one takes.
export QTEST_FUNCTION_TIMEOUT=$((kills * 60000 + 3600000)) SELMAR_KILLS="$kills"
if [ -n "${2:-}" ]; then
    export SELMAR_KILL_SEED="$2"
fi
failed=()
for test in "${tests[@]}"; do
    started=$SECONDS
    status=0
    "$build/tests/$test" >"$home/output" 2>"$home/errors" || status=$?
    # The figures, and what QtTest says of a failure; not every single recovery.
    grep -aE '^[a-z].* [^ ]|^QINFO.*seed|^FAIL!|^   Loc:|^Totals' "$home/output" | grep -avE '^r[a-z-]+ [0-9]+$' || true
    if [ "$status" -ne 0 ]; then
        failed+=("$test")
        tail -n 20 "$home/errors"
    fi
    echo "$test: $((SECONDS - started)) s"
    echo
done
if [ "${#failed[@]}" -gt 0 ]; then
    echo "Не прошло: ${failed[*]}" >&2
    exit 1
fi
