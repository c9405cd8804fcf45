# Debian packages that the build and the tests need; sourced by run.sh and test.sh.

SELMAR_BUILD_PACKAGES=(
    g++ cmake ninja-build ccache pkg-config
    qtbase5-dev qtbase5-dev-tools qttools5-dev qttools5-dev-tools
    qttranslations5-l10n libqt5sql5-sqlite libqrencode-dev libzxing-dev librabbitmq-dev fonts-dejavu-core
)
# The tests look at the pages of written PDF files.
# Properties are checked with values that a library makes up and shrinks.
# Some start a message broker of their own, with certificates of their own making.
# Power cuts are played with what the database engine writes.
# The mutation script reads C++ with clang.
SELMAR_TEST_PACKAGES=(poppler-utils librapidcheck-dev dpkg-dev rabbitmq-server openssl libsqlite3-dev python3 python3-clang-14)
# The benchmark and its growth curves, only for scripts/bench.sh.
SELMAR_BENCH_PACKAGES=(libbenchmark-dev libqt5charts5-dev)
# A clean Debian to install the packages into, and who looks at them: scripts/packages-check.sh.
SELMAR_CHECK_PACKAGES=(debootstrap lintian desktop-file-utils)
# The fuzzing engine, only for scripts/fuzz.sh.
SELMAR_FUZZ_PACKAGES=(clang libclang-rt-14-dev)
# Readers of the code and of a running program, only for scripts/analyse.sh, scripts/memcheck.sh and the preset
# asan-ubsan-clang.
SELMAR_ANALYSIS_PACKAGES=(clang libclang-rt-14-dev clang-tidy clazy valgrind)
# Counting the lines that tests run, only for scripts/coverage.sh.
SELMAR_COVERAGE_PACKAGES=(gcovr)

# Prints those of the named packages that are not installed, one per line.
missing_packages() {
    local package status
    for package in "$@"; do
        # A name that another package provides counts as well (pkg-config comes from pkgconf).
        status=$(dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null || true)
        case "$status" in
            *ii*) ;;
            *) [ "$package" = pkg-config ] && command -v pkg-config >/dev/null || echo "$package" ;;
        esac
    done
}

# Debian starts a service as soon as its package is installed, and at every boot. The tests run a broker of their own: the
# machine's stays off. Uses `elevate` of its caller.
install_packages() {
    local policy=/usr/sbin/policy-rc.d broker='' status=0
    case " $* " in *" rabbitmq-server "*) broker=1 ;; esac
    if [ -n "$broker" ] && [ ! -e "$policy" ]; then
        "${elevate[@]}" sh -c "printf '#!/bin/sh\nexit 101\n' >$policy && chmod 755 $policy"
    else
        policy=''
    fi
    "${elevate[@]}" apt-get update -q &&
        "${elevate[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "$@" || status=1
    [ -z "$policy" ] || "${elevate[@]}" rm -f "$policy"
    if [ -n "$broker" ] && [ "$status" -eq 0 ] && [ -d /run/systemd/system ]; then
        "${elevate[@]}" systemctl disable --quiet rabbitmq-server || true
    fi
    return "$status"
}

# Installs what is missing of the named packages; does nothing, and touches no network, when all are there.
ensure_packages() {
    local missing elevate=()
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "Пакеты не проверены: это не Debian. Нужны: $*" >&2
        return 0
    fi
    mapfile -t missing < <(missing_packages "$@")
    [ "${#missing[@]}" -eq 0 ] && return 0

    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Не хватает пакетов: ${missing[*]}" >&2
            echo "Для их установки нужен root, а sudo здесь нет. Попросите администратора выполнить:" >&2
            echo "    apt-get install --no-install-recommends ${missing[*]}" >&2
            return 1
        fi
        elevate=(sudo)
        # Without a terminal nobody can answer the question for a password.
        [ -t 0 ] || elevate=(sudo -n)
    fi
    echo "Устанавливаются пакеты: ${missing[*]}" >&2
    if ! install_packages "${missing[@]}" >&2; then
        echo "Пакеты не установились: ${missing[*]}. Причина в строках apt-get выше." >&2
        return 1
    fi
}
