#!/usr/bin/env bash
# Builds the Debian packages into build/packages/: selmar-platform, selmar-platform-dev, selmarrivenhold-plugin and
# selmar-terminal. Install them with: apt-get install ./build/packages/*.deb
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

ensure_packages "${SELMAR_BUILD_PACKAGES[@]}" dpkg-dev
build_preset terminal selmar_terminal selmarrivenhold selmar_billing_worker >&2
rm -rf "$root/build/packages"
cpack -G DEB --config "$root/build/terminal/CPackConfig.cmake" -B "$root/build/packages" >&2
rm -rf "$root/build/packages/_CPack_Packages"
ls -1 "$root"/build/packages/*.deb
