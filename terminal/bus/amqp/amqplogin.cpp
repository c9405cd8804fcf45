#include <bus/amqp/amqplogin.h>

#include <bus/amqp/amqperror.h>
#include <bus/amqp/amqptable.h>
#include <bus/amqp/brokeraddress.h>

#include <QFile>

#include <amqp_framing.h>
#include <amqp_ssl_socket.h>
#include <amqp_tcp_socket.h>

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <array>

namespace {

constexpr int FRAME_SIZE = 131072;
/// A peer that takes no bytes for this long is gone. Without it a write to a broker that stopped
/// reading would wait for ever.
constexpr unsigned int WRITE_TIMEOUT_MS = 15000;

void prepareDescriptor(int descriptor)
{
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    ::setsockopt(descriptor, IPPROTO_TCP, TCP_USER_TIMEOUT, &WRITE_TIMEOUT_MS,
                 sizeof WRITE_TIMEOUT_MS);
}

QString connectSocket(amqp_connection_state_t state, const BrokerAddress &address,
                      const timeval &timeout)
{
    amqp_socket_t *socket =
        address.isEncrypted() ? amqp_ssl_socket_new(state) : amqp_tcp_socket_new(state);
    if (!socket)
        return QStringLiteral("не хватает памяти");
    if (address.isEncrypted()) {
        amqp_ssl_socket_set_verify_peer(socket, 1);
        amqp_ssl_socket_set_verify_hostname(socket, 1);
        const QByteArray file = QFile::encodeName(address.authorityFile());
        if (amqp_ssl_socket_set_ssl_versions(socket, AMQP_TLSv1_2, AMQP_TLSvLATEST)
                != AMQP_STATUS_OK
            || amqp_ssl_socket_set_cacert(socket, file.constData()) != AMQP_STATUS_OK) {
            return QStringLiteral("файл удостоверяющего центра «%1» не годится: нужен PEM")
                .arg(address.authorityFile());
        }
    }
    const int status = amqp_socket_open_noblock(socket, address.host().toUtf8().constData(),
                                                address.port(), &timeout);
    if (status != AMQP_STATUS_OK)
        return AmqpError::ofStatus(status);
    prepareDescriptor(amqp_get_sockfd(state));
    return QString();
}

QString logIn(amqp_connection_state_t state, const BrokerAddress &address, const QString &name,
              int heartbeatS)
{
    const AmqpTable capabilities({{QStringLiteral("connection.blocked"), true},
                                  {QStringLiteral("consumer_cancel_notify"), true}});
    const QByteArray shownName = name.toUtf8();
    std::array<amqp_table_entry_t, 2> entries;
    entries[0].key = amqp_cstring_bytes("connection_name");
    entries[0].value.kind = AMQP_FIELD_KIND_UTF8;
    entries[0].value.value.bytes = AmqpBytes::view(shownName);
    entries[1].key = amqp_cstring_bytes("capabilities");
    entries[1].value.kind = AMQP_FIELD_KIND_TABLE;
    entries[1].value.value.table = capabilities.table();
    const amqp_table_t properties{int(entries.size()), entries.data()};

    const amqp_rpc_reply_t reply = amqp_login_with_properties(
        state, address.virtualHost().toUtf8().constData(), AmqpLogin::CHANNEL, FRAME_SIZE,
        heartbeatS, &properties, AMQP_SASL_METHOD_PLAIN, address.user().toUtf8().constData(),
        address.password().toUtf8().constData());
    if (reply.reply_type != AMQP_RESPONSE_NORMAL)
        return AmqpError::ofReply(reply);
    amqp_channel_open(state, AmqpLogin::CHANNEL);
    const amqp_rpc_reply_t opened = amqp_get_rpc_reply(state);
    return opened.reply_type == AMQP_RESPONSE_NORMAL ? QString() : AmqpError::ofReply(opened);
}

} // namespace

amqp_connection_state_t AmqpLogin::open(const BrokerAddress &address, const QString &name,
                                        int timeoutMs, int heartbeatS, QString *error)
{
    amqp_connection_state_t state = amqp_new_connection();
    if (!state) {
        *error = QStringLiteral("не хватает памяти");
        return nullptr;
    }
    const timeval timeout{timeoutMs / 1000, (timeoutMs % 1000) * 1000};
    amqp_set_handshake_timeout(state, &timeout);
    amqp_set_rpc_timeout(state, &timeout);
    *error = connectSocket(state, address, timeout);
    if (error->isEmpty())
        *error = logIn(state, address, name, heartbeatS);
    if (error->isEmpty())
        return state;
    amqp_destroy_connection(state);
    return nullptr;
}
