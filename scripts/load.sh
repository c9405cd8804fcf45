#!/usr/bin/env bash
# Many cash boxes without windows, one message broker, several billing workers: payments per second and how long each step
# takes, processor time per payment (ms), and what the broker does by itself with messages of the same size.
#
#     scripts/load.sh [--boxes 1,10,50,200] [--workers 1,2,4] [--seconds 10]
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
. "$root/scripts/packages.sh"
. "$root/scripts/build.sh"

ensure_packages "${SELMAR_BUILD_PACKAGES[@]}" rabbitmq-server openssl
build_preset load selmar_load

folder=$(mktemp -d)
export SELMAR_BROKER_PORT=${SELMAR_BROKER_PORT:-5690}
finish() {
    "$root/scripts/broker.sh" stop "$folder" >&2 || true
    rm -rf "$folder"
}
trap finish EXIT
"$root/scripts/broker.sh" start "$folder" >&2
bus() {
    echo "amqps://$1@localhost:$((SELMAR_BROKER_PORT + 1))/selmar?cacert=$folder/ca.pem&passwordfile=$folder/$1.password"
}
QT_QPA_PLATFORM=offscreen "$root/build/load/bin/selmar-load" --bus "$(bus box1)" --worker-bus "$(bus worker)" \
    --broker-pid "$(cat "$folder/pid")" "$@"
