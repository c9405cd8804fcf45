#!/usr/bin/env bash
# Makes docs/pictures/ anew from the demos and a scenario: what the documents show is what the program draws.
set -euo pipefail
# No picture comes from a workstation that could log in anywhere.
unset SELMAR_BUS_PASSWORD

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for who in individual legal; do
    "$root/run.sh" --demo "$who" --out "$work/$who" >"$work/$who.txt"
done
"$root/run.sh" --scenario "$root/scenarios/windows-beside.scenario" --out "$work/beside" >"$work/beside.txt"
mkdir -p "$root/docs/pictures"
copy() { # individual or legal, then the names of pictures without their numbers
    local who=$1 picture
    shift
    for picture in "$@"; do
        cp "$work/$who"/[0-9][0-9]-"$picture.png" "$root/docs/pictures/$who-$picture.png"
    done
}
copy individual window account services payment card-amount sent journal bill scanner
copy legal document documents
cp "$work/beside/14-devicesWindow.png" "$root/docs/pictures/devices.png"
cp "$work/beside/23-busWindow.png" "$root/docs/pictures/bus.png"
