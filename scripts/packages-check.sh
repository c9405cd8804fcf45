#!/usr/bin/env bash
# Builds the Debian packages, lets lintian look at them, installs them into a clean Debian made for that with debootstrap, and
# takes whole payments there as an ordinary user. Wants root for the clean Debian, and the mirror that apt uses.
#
#   scripts/packages-check.sh                 the clean Debian is made in a temporary folder and removed
#   scripts/packages-check.sh --keep DIR      it stays in DIR, which must not exist yet
set -euo pipefail

root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
. "$root/scripts/packages.sh"

fail() {
    echo "$*" >&2
    exit 1
}

[ "$(id -u)" -eq 0 ] || fail "Чистую систему создаёт только root: запустите через sudo."
case "${1:-}" in
    '') work=$(mktemp -d); clean=$work/debian; trap 'rm -rf "$work"' EXIT ;;
    --keep)
        [ -n "${2:-}" ] && [ ! -e "$2" ] || fail "После --keep нужна папка, которой ещё нет."
        clean=$(realpath -m "$2") ;;
    *) fail "Нужно: scripts/packages-check.sh [--keep ПАПКА]" ;;
esac

ensure_packages "${SELMAR_CHECK_PACKAGES[@]}"
"$root/scripts/packages-build.sh"
packages=("$root"/build/packages/*.deb)

echo "== lintian"
# Both libraries of the platform are one package on purpose: a plugin and its host must have one copy of each.
# cpack lets scripts of the package call ldconfig where Debian's own tools leave it to a trigger.
lintian --allow-root --tag-display-limit 0 --fail-on error,warning \
    --suppress-tags package-name-doesnt-match-sonames,lacks-ldconfig-trigger,maintscript-calls-ldconfig "${packages[@]}"
desktop-file-validate "$root/packaging/selmar-terminal.desktop"

echo "== чистая система"
. /etc/os-release
mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' "Codename: $VERSION_CODENAME" | sort -u | head -1)
mkdir -p "$clean"
debootstrap --variant=minbase "$VERSION_CODENAME" "$clean" "${mirror:-http://deb.debian.org/debian}" >"$clean.log" 2>&1 ||
    { tail -20 "$clean.log" >&2; fail "debootstrap не справился."; }
rm -f "$clean.log"

in_clean() {
    chroot "$clean" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}
as_user() {
    chroot --userspec=cashier "$clean" env -i PATH=/usr/bin:/bin LC_ALL=C.UTF-8 HOME=/home/cashier \
        XDG_RUNTIME_DIR=/home/cashier/runtime QT_QPA_PLATFORM=offscreen "$@"
}

mkdir "$clean/packages"
cp "${packages[@]}" "$clean/packages/"
in_clean sh -c 'apt-get update -q && apt-get install -y -q --no-install-recommends /packages/*.deb' >"$clean/install.log" 2>&1 ||
    { tail -20 "$clean/install.log" >&2; fail "Пакеты не установились."; }
in_clean useradd --create-home cashier
in_clean install -d -m 0700 -o cashier /home/cashier/runtime

echo "== программа"
as_user selmar-terminal --version
as_user selmar-terminal --help | grep -- --demo >/dev/null || fail "В справке нет ключа --demo."
for who in individual legal; do
    as_user selmar-terminal --demo "$who" --out "/home/cashier/$who" | tail -1
done
as_user selmar-terminal --bill 7001000101 --file /home/cashier/bill.png
as_user selmar-terminal --read-code /home/cashier/bill.png | grep 'PersAcc=7001000101' >/dev/null || fail "Код квитанции не прочитан."
as_user selmar-billing-worker --help >/dev/null
# The module for a broker was found and loaded: it is the one that reads the address.
refused=$(as_user selmar-terminal --demo legal --bus mqtt://h 2>&1) && fail "Негодный адрес сервера сообщений принят."
grep 'начинаться с amqp://' <<<"$refused" >/dev/null || fail "Связь с сервером сообщений не загрузилась: $refused"
leftovers=$(in_clean dpkg --verify selmar-platform selmarrivenhold-plugin selmar-terminal)
[ -z "$leftovers" ] || fail "Файлы пакетов изменились: $leftovers"

echo "== удаление"
in_clean apt-get purge -y -q selmar-terminal selmarrivenhold-plugin selmar-platform-dev selmar-platform >>"$clean/install.log" 2>&1
left=$(find "$clean/usr" "$clean/etc" -iname '*selmar*' | head)
[ -z "$left" ] || fail "После удаления остались: $left"
echo "Пакеты установились, работали и удалились."
