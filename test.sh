#!/usr/bin/env bash
# Builds everything and runs the tests; further arguments go to ctest (./test.sh -R receipt, ./test.sh -L dialog).
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")" && pwd)
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

ensure_packages "${SELMAR_BUILD_PACKAGES[@]}" "${SELMAR_TEST_PACKAGES[@]}"
build_preset debug
cd "$root"
exec ctest --preset debug "$@"
