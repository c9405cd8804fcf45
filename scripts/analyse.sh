#!/usr/bin/env bash
# Reads the code with clang-tidy and clazy, which know faults that a compiler does not look for; any finding ends it with 1.
#
#   scripts/analyse.sh                   everything of our own: src platform terminal fuzz tests docs/minimalhost
#   scripts/analyse.sh src terminal/bus  only what lies below these folders, or these files
#
# The wanted checks and what is left out stand in .clang-tidy and below. JOBS=1 leaves one processor to others.
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

# clazy's checks of levels 0 and 1, which its makers hold to be nearly free of false alarms, and two of level 2: an event
# handler that forgets its base class, and a virtual call before the object is whole. Left out:
#   non-pod-global-static   the records' field names are static strings by their interface
CLAZY_CHECKS="level0,level1,base-class-event,virtual-call-ctor,no-non-pod-global-static"

ensure_packages "${SELMAR_BUILD_PACKAGES[@]}" "${SELMAR_TEST_PACKAGES[@]}" "${SELMAR_ANALYSIS_PACKAGES[@]}"
build=${SELMAR_BUILD:-$root/build/debug}
if [ -z "${SELMAR_BUILD:-}" ]; then
    build_preset debug >&2
fi

folders=("$@")
[ "$#" -gt 0 ] || folders=(src platform terminal fuzz tests docs/minimalhost)
paths=("${folders[@]/#/$root/}")
mapfile -t files < <(sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' "$build/compile_commands.json" | sort -u | while read -r file; do
    for path in "${paths[@]}"; do
        [[ $file == "${path%/}" || $file == "${path%/}"/*.cpp ]] && echo "$file" && break
    done
done)
[ "${#files[@]}" -gt 0 ] || { echo "Под «${folders[*]}» нет исходников, которые собираются." >&2; exit 2; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export build work CLAZY_CHECKS
# The files were built by gcc: clang does not know all of its flags, and calls the logging macros of Qt pedantic.
flags="--extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-gnu-zero-variadic-macro-arguments"
export flags
analyse() {
    local file=$1 log="$work/${1//\//_}"
    # shellcheck disable=SC2086
    clang-tidy -p "$build" --quiet $flags "$file" >"$log.tidy" 2>/dev/null || touch "$log.found"
    clazy-standalone -p "$build" -checks="$CLAZY_CHECKS" $flags \
        -header-filter='/(src|platform|terminal|fuzz|tests)/[^_]*\.h$' "$file" >"$log.clazy" 2>&1 || touch "$log.found"
    if grep -E -A 4 '(warning|error): ' "$log.tidy" "$log.clazy" -h; then touch "$log.found"; fi
}
export -f analyse
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "${JOBS:-$(nproc)}" bash -c 'analyse "$0"'

found=$(find "$work" -name '*.found' | wc -l)
echo "${#files[@]} files, with findings: $found"
[ "$found" -eq 0 ]
