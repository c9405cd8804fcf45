#!/usr/bin/env bash
# Makes docs/pictures/ anew from the demos and a scenario: what the documents show is what the program draws.
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for who in individual legal; do
    "$root/run.sh" --demo "$who" --out "$work/$who" >"$work/$who.txt"
done
"$root/run.sh" --scenario "$root/scenarios/windows-beside.scenario" --out "$work/beside" >"$work/beside.txt"
mkdir -p "$root/docs/pictures"
for picture in 02-account 03-services 04-payment 05-card-amount 07-sent 08-journal; do
    cp "$work/individual/$picture.png" "$root/docs/pictures/individual-${picture#*-}.png"
done
for picture in 02-document 04-documents; do
    cp "$work/legal/$picture.png" "$root/docs/pictures/legal-${picture#*-}.png"
done
cp "$work/beside/14-devicesWindow.png" "$root/docs/pictures/devices.png"
cp "$work/beside/23-busWindow.png" "$root/docs/pictures/bus.png"
