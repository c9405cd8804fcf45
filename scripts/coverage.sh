#!/usr/bin/env bash
# Measures which lines and branches of src/ the tests of src/ run, and holds the list of lines that none of them runs against
# tests/coverage-exceptions.txt: a line without a reason fails, and so does a reason for a line that is run after all.
#
#   scripts/coverage.sh             builds build/coverage, runs the tests, checks
#   scripts/coverage.sh --check     only reads what the last run counted
#   build/coverage/report/          the sources with their counts, as HTML
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

case "${1:-}" in
    "" | --check) ;;
    *) echo "Нужно: scripts/coverage.sh [--check]" >&2; exit 2 ;;
esac
ensure_packages "${SELMAR_BUILD_PACKAGES[@]}" "${SELMAR_TEST_PACKAGES[@]}" "${SELMAR_COVERAGE_PACKAGES[@]}"
work="$root/build/coverage"

if [ "${1:-}" != --check ]; then
    build_preset coverage selmar_tests_of_src >&2
    # Counts add up over runs, and those of a removed line would stay.
    find "$work" -name '*.gcda' -delete
    (cd "$root" && ctest --preset coverage) >&2
fi

mkdir -p "$work/report"
gcovr --root "$root" --filter "$root/src/" --exclude-throw-branches --exclude-unreachable-branches \
    --json "$work/coverage.json" --html-details "$work/report/index.html" "$work/src"
exec /usr/bin/python3 "$root/tools/coverage/check.py" "$work/coverage.json" "$root/tests/coverage-exceptions.txt"
