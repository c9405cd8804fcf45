#!/usr/bin/env bash
# Builds the reference terminal with the plugin and starts it.
#
#   ./run.sh                       with a display: the terminal; without one: a whole payment, printed step by step
#   ./run.sh --demo individual     a whole payment of an individual without a display
#   ./run.sh --demo legal          the same for a legal entity
#   ./run.sh --scenario FILE       a payment that a file describes (scenarios/, docs/scenarios.md)
#   ./run.sh --help                everything else the terminal understands
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")" && pwd)
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

ensure_packages "${SELMAR_BUILD_PACKAGES[@]}"
build_preset terminal selmar_terminal selmarrivenhold >&2

display="${DISPLAY:-}${WAYLAND_DISPLAY:-}"
arguments=() demo='' scenario='' out='' visible='' only_text=''
while [ "$#" -gt 0 ]; do
    case "$1" in
        --demo)
            # "--demo" alone means the individual's payment.
            case "${2:-}" in
                '' | -*) demo=individual ;;
                *) demo=$2; shift ;;
            esac
            arguments+=(--demo "$demo") ;;
        --demo=*) demo=${1#*=}; arguments+=("$1") ;;
        *)
            case "$1" in
                --out | --out=*) out=yes ;;
                --scenario | --scenario=*) scenario=yes ;;
                --visible) visible=yes ;;
                -h | --help | --help-all | -v | --version) only_text=yes ;;
            esac
            arguments+=("$1") ;;
    esac
    shift
done

if [ -z "$only_text$demo$scenario$display" ]; then
    demo=individual
    # In front: behind an option that lacks its value it would be taken for one.
    arguments=(--demo "$demo" "${arguments[@]}")
fi
if [ -n "$demo" ] && [ -z "$out" ]; then
    arguments=(--out "$root/build/demo-$demo" "${arguments[@]}")
fi

if [ -n "$visible" ] && [ -z "$display" ]; then
    echo "Ключ --visible показывает окна, а экрана здесь нет: не заданы DISPLAY и WAYLAND_DISPLAY." >&2
    exit 2
fi
if [ -n "$only_text" ] || { [ -n "$demo$scenario" ] && [ -z "$visible" ]; }; then
    export QT_QPA_PLATFORM=offscreen
fi
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    export XDG_RUNTIME_DIR="$root/build/runtime"
    mkdir -p -m 0700 "$XDG_RUNTIME_DIR"
fi

exec "$root/build/terminal/bin/selmar-terminal" "${arguments[@]}"
