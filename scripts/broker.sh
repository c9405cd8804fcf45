#!/usr/bin/env bash
# One message broker on this machine for trying the terminal with a billing worker; see docs/broker.md.
#
#   scripts/broker.sh start DIR    starts it with its data, users, passwords and certificates in DIR (made if missing)
#   scripts/broker.sh stop DIR     ends it; DIR keeps its messages until it is removed
#   scripts/broker.sh status DIR
#
# Listens on 127.0.0.1 only: SELMAR_BROKER_PORT (5680 if unset) plain, the next port encrypted, two more for itself.
set -euo pipefail

server=/usr/lib/rabbitmq/bin/rabbitmq-server
port=${SELMAR_BROKER_PORT:-5680}

fail() {
    echo "$*" >&2
    exit 1
}

# The hash that the broker keeps instead of a password: four bytes of salt, then SHA-256 of salt and password.
password_hash() {
    local salt
    salt=$(openssl rand -hex 4)
    { printf '%b' "$(sed 's/../\\x&/g' <<<"$salt")"
      { printf '%b' "$(sed 's/../\\x&/g' <<<"$salt")"; printf '%s' "$1"; } | openssl dgst -sha256 -binary
    } | base64 -w0
}

make_certificates() {
    local curve=(ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes)
    (cd "$dir"
     openssl req -x509 -newkey "${curve[@]}" -keyout ca.key -out ca.pem -days 365 -subj '/CN=selmar local broker'
     openssl req -newkey "${curve[@]}" -keyout server.key -out server.csr -subj /CN=localhost
     printf 'subjectAltName=DNS:localhost\n' >server.ext
     openssl x509 -req -in server.csr -CA ca.pem -CAkey ca.key -CAcreateserial -out server.pem -days 365 -extfile server.ext
    ) 2>/dev/null || fail "Сертификаты не созданы: проверьте openssl и место в $dir."
}

make_user() { # name configure write read: a line for users, a line for permissions
    [ -s "$dir/$1.password" ] || openssl rand -hex 16 >"$dir/$1.password"
    users+=("{\"name\":\"$1\",\"password_hash\":\"$(password_hash "$(cat "$dir/$1.password")")\",\"hashing_algorithm\":\"rabbit_password_hashing_sha256\",\"tags\":\"\"}")
    permissions+=("{\"user\":\"$1\",\"vhost\":\"selmar\",\"configure\":\"$2\",\"write\":\"$3\",\"read\":\"$4\"}")
}

prepare() {
    local users=() permissions=()
    make_user box1 '^$' '^selmar\\.billing$' '^$'
    make_user box2 '^$' '^selmar\\.billing$' '^$'
    make_user worker '^selmar\\.billing' '^(selmar\\.billing.*|amq\\.default)$' '^selmar\\.billing'
    local IFS=,
    cat >"$dir/definitions.json" <<JSON
{"vhosts":[{"name":"selmar"}],"users":[${users[*]}],"permissions":[${permissions[*]}]}
JSON
    [ -s "$dir/server.pem" ] || make_certificates
    cat >"$dir/rabbitmq.conf" <<CONF
listeners.tcp.1 = 127.0.0.1:$port
listeners.ssl.1 = 127.0.0.1:$((port + 1))
ssl_options.cacertfile = $dir/ca.pem
ssl_options.certfile = $dir/server.pem
ssl_options.keyfile = $dir/server.key
ssl_options.versions.1 = tlsv1.3
ssl_options.versions.2 = tlsv1.2
log.console = false
disk_free_limit.absolute = 200MB
load_definitions = $dir/definitions.json
CONF
    echo '[].' >"$dir/enabled_plugins"
    mkdir -p "$dir/data" "$dir/log" "$dir/home"
    if [ ! -s "$dir/home/.erlang.cookie" ]; then
        openssl rand -hex 16 >"$dir/home/.erlang.cookie"
        chmod 400 "$dir/home/.erlang.cookie"
    fi
    echo "$port" >"$dir/port"
}

is_running() { # file with a process id; the command line guards against a number that was given out again
    local pid
    pid=$(cat "$1" 2>/dev/null) && [ -n "$pid" ] && tr '\0' ' ' <"/proc/$pid/cmdline" 2>/dev/null | grep -q "$2"
}

start() {
    [ -x "$server" ] || fail "Нет сервера сообщений. Установите: apt-get install --no-install-recommends rabbitmq-server openssl"
    is_running "$dir/pid" beam && fail "Сервер сообщений в $dir уже работает."
    (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null && fail "Порт $port занят. Укажите другой: SELMAR_BROKER_PORT=..."
    prepare
    export HOME="$dir/home" RABBITMQ_NODENAME="selmar$port@localhost" RABBITMQ_MNESIA_BASE="$dir/data" \
        RABBITMQ_LOG_BASE="$dir/log" RABBITMQ_CONFIG_FILE="$dir/rabbitmq" RABBITMQ_PID_FILE="$dir/pid" \
        RABBITMQ_ENABLED_PLUGINS_FILE="$dir/enabled_plugins" RABBITMQ_CONF_ENV_FILE=/nonexistent \
        RABBITMQ_DIST_PORT=$((port + 3)) ERL_EPMD_ADDRESS=127.0.0.1 ERL_EPMD_PORT=$((port + 2)) \
        RABBITMQ_SERVER_ADDITIONAL_ERL_ARGS='-kernel inet_dist_use_interface {127,0,0,1}' RUNNING_UNDER_SYSTEMD=true
    setsid epmd -port "$ERL_EPMD_PORT" -address 127.0.0.1 </dev/null >"$dir/log/epmd" 2>&1 &
    echo $! >"$dir/epmd.pid"
    setsid "$server" </dev/null >"$dir/log/output" 2>&1 &
    local waited
    for waited in $(seq 1 600); do
        (exec 3<>"/dev/tcp/127.0.0.1/$((port + 1))") 2>/dev/null && break
        [ "$waited" -lt 600 ] || fail "Сервер сообщений не запустился за минуту. Причина в $dir/log."
        sleep 0.1
    done
    cat <<TEXT
Сервер сообщений работает. Обработчик биллинга и рабочее место:
  selmar-billing-worker --bus 'amqps://worker@localhost:$((port + 1))/selmar?cacert=$dir/ca.pem&passwordfile=$dir/worker.password' --database $dir/billing.sqlite
  selmar-terminal --bus 'amqps://box1@localhost:$((port + 1))/selmar?cacert=$dir/ca.pem&passwordfile=$dir/box1.password'
Завершить: scripts/broker.sh stop $dir
TEXT
}

end_process() { # file, name in the command line
    is_running "$1" "$2" || { rm -f "$1"; return 0; }
    local pid waited
    pid=$(cat "$1")
    kill -TERM "$pid"
    for waited in $(seq 1 300); do
        [ -d "/proc/$pid" ] && grep -qv '^State:.*zombie' <(grep '^State:' "/proc/$pid/status" 2>/dev/null) || break
        [ "$waited" -lt 300 ] || kill -KILL "$pid"
        sleep 0.1
    done
    rm -f "$1"
}

[ "$#" -eq 2 ] || fail "Нужно: scripts/broker.sh start|stop|status ПАПКА"
umask 077
case "$1" in
    start)
        mkdir -p "$2"
        dir=$(cd "$2" && pwd)
        start ;;
    stop)
        dir=$(cd "$2" && pwd)
        end_process "$dir/pid" beam
        end_process "$dir/epmd.pid" epmd
        echo "Сервер сообщений в $dir остановлен." ;;
    status)
        dir=$(cd "$2" && pwd)
        if is_running "$dir/pid" beam; then
            echo "Сервер сообщений в $dir работает, порт $(cat "$dir/port")."
        else
            echo "Сервер сообщений в $dir не работает."
            exit 1
        fi ;;
    *) fail "Нужно: scripts/broker.sh start|stop|status ПАПКА" ;;
esac
