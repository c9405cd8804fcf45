#include <bus/amqp/amqperror.h>

#include <bus/amqp/amqptable.h>

#include <amqp_framing.h>

namespace {

/// The broker quotes names in its texts; a name that somebody made very long is cut.
constexpr int LONGEST_TEXT = 200;

} // namespace

QString AmqpError::ofStatus(int status)
{
    switch (status) {
    case AMQP_STATUS_HOSTNAME_RESOLUTION_FAILED:
        return QStringLiteral("имя сервера сообщений не найдено: проверьте адрес и сеть");
    case AMQP_STATUS_SOCKET_ERROR:
    case AMQP_STATUS_TCP_ERROR:
        return QStringLiteral("сервер сообщений недоступен: проверьте сеть");
    case AMQP_STATUS_TIMEOUT:
        return QStringLiteral("сервер сообщений не отвечает");
    case AMQP_STATUS_HEARTBEAT_TIMEOUT:
        return QStringLiteral("сервер сообщений замолчал");
    case AMQP_STATUS_CONNECTION_CLOSED:
    case AMQP_STATUS_SOCKET_CLOSED:
        return QStringLiteral("соединение с сервером сообщений закрыто");
    case AMQP_STATUS_SSL_PEER_VERIFY_FAILED:
    case AMQP_STATUS_SSL_CONNECTION_FAILED:
        return QStringLiteral("защищённое соединение не установлено: сертификат сервера сообщений "
                              "не подтверждён, проверьте файл удостоверяющего центра");
    case AMQP_STATUS_SSL_HOSTNAME_VERIFY_FAILED:
        return QStringLiteral("сертификат выдан не этому серверу сообщений: проверьте адрес");
    case AMQP_STATUS_SSL_ERROR:
        return QStringLiteral("ошибка защищённого соединения с сервером сообщений");
    default:
        return QStringLiteral("сбой обмена с сервером сообщений (%1)")
            .arg(QLatin1String(amqp_error_string2(status)));
    }
}

QString AmqpError::ofClose(int code, const QString &text)
{
    const QString shown = text.left(LONGEST_TEXT);
    switch (code) {
    case AMQP_ACCESS_REFUSED:
        return text.contains(QLatin1String("Login was refused"))
            ? QStringLiteral("сервер сообщений не принял имя или пароль")
            : QStringLiteral("сервер сообщений не дал права (%1)").arg(shown);
    case AMQP_NOT_FOUND:
        return QStringLiteral("на сервере сообщений нет нужной очереди или обменника (%1)")
            .arg(shown);
    case AMQP_NOT_ALLOWED:
        return QStringLiteral("сервер сообщений не пускает в этот раздел (%1)").arg(shown);
    case AMQP_PRECONDITION_FAILED:
        return QStringLiteral("очередь на сервере сообщений объявлена иначе (%1)").arg(shown);
    case AMQP_CONNECTION_FORCED:
        return QStringLiteral("сервер сообщений закрывается (%1)").arg(shown);
    default:
        return QStringLiteral("сервер сообщений отказал (%1: %2)")
            .arg(QString::number(code), shown);
    }
}

QString AmqpError::ofReply(const amqp_rpc_reply_t &reply)
{
    const auto [type, answer, status] = reply;
    if (type == AMQP_RESPONSE_LIBRARY_EXCEPTION)
        return ofStatus(status);
    if (type == AMQP_RESPONSE_SERVER_EXCEPTION) {
        if (answer.id == AMQP_CONNECTION_CLOSE_METHOD) {
            const auto *method = static_cast<amqp_connection_close_t *>(answer.decoded);
            return ofClose(method->reply_code, AmqpBytes::text(method->reply_text));
        }
        if (answer.id == AMQP_CHANNEL_CLOSE_METHOD) {
            const auto *method = static_cast<amqp_channel_close_t *>(answer.decoded);
            return ofClose(method->reply_code, AmqpBytes::text(method->reply_text));
        }
    }
    return QStringLiteral("сервер сообщений ответил непонятно");
}
