#include <bus/amqp/brokeraddress.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QUrlQuery>

const char *const BrokerAddress::PASSWORD_VARIABLE = "SELMAR_BUS_PASSWORD";

namespace {

const QString CA_OPTION = QStringLiteral("cacert");
const QString PASSWORD_OPTION = QStringLiteral("passwordfile");
constexpr qint64 LONGEST_PASSWORD = 1024;

QString systemAuthorities()
{
    return QStringLiteral("/etc/ssl/certs/ca-certificates.crt");
}

std::optional<QString> passwordFromFile(const QString &name, QString *error)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("Файл с паролем «%1» не читается (%2). Проверьте путь и права.")
                     .arg(QDir::toNativeSeparators(name), file.errorString());
        return std::nullopt;
    }
    if (file.permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther))
        qWarning("Password file %s: other users can read it", qUtf8Printable(name));
    QByteArray line = file.readLine(LONGEST_PASSWORD);
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    if (line.isEmpty()) {
        *error = QStringLiteral("Файл с паролем «%1» пуст: пароль — его первая строка.")
                     .arg(QDir::toNativeSeparators(name));
        return std::nullopt;
    }
    return QString::fromUtf8(line);
}

std::optional<QString> findPassword(const QUrl &url, const QUrlQuery &options, QString *error)
{
    if (!url.password().isEmpty())
        return url.password(QUrl::FullyDecoded);
    if (options.hasQueryItem(PASSWORD_OPTION))
        return passwordFromFile(options.queryItemValue(PASSWORD_OPTION, QUrl::FullyDecoded), error);
    const QString environment = qEnvironmentVariable(BrokerAddress::PASSWORD_VARIABLE);
    if (!environment.isEmpty())
        return environment;
    *error = QStringLiteral("Нет пароля к серверу сообщений. Укажите его в переменной %1 или в "
                            "файле (?passwordfile=ФАЙЛ).")
                 .arg(QLatin1String(BrokerAddress::PASSWORD_VARIABLE));
    return std::nullopt;
}

} // namespace

std::optional<BrokerAddress> BrokerAddress::parse(const QString &text, QString *error)
{
    // No message repeats the text or the parser's own complaint: either may hold the password.
    const auto refuse = [error](const QString &what) {
        *error = what;
        return std::nullopt;
    };
    const QUrl url(text.trimmed(), QUrl::StrictMode);
    const QString scheme = url.scheme();
    if (!text.trimmed().startsWith(QLatin1String("amqp"), Qt::CaseInsensitive))
        return refuse(QStringLiteral("Адрес сервера сообщений должен начинаться с amqp:// или "
                                     "amqps://."));
    if (!url.isValid())
        return refuse(QStringLiteral(
            "Адрес сервера сообщений не разобран. Нужен вид amqps://имя@сервер:порт/раздел; особые "
            "знаки имени и пароля записываются через %XX."));
    if (scheme != QLatin1String("amqp") && scheme != QLatin1String("amqps"))
        return refuse(QStringLiteral("Адрес сервера сообщений должен начинаться с amqp:// или "
                                     "amqps://."));
    if (url.host().isEmpty())
        return refuse(QStringLiteral("В адресе сервера сообщений не указано имя сервера."));
    if (url.userName().isEmpty())
        return refuse(QStringLiteral("В адресе сервера сообщений не указано имя пользователя."));
    if (url.port() == 0 || url.hasFragment())
        return refuse(
            QStringLiteral("В адресе сервера сообщений неверный порт или лишний знак #."));

    BrokerAddress address;
    address.m_encrypted = scheme == QLatin1String("amqps");
    address.m_host = url.host(QUrl::FullyDecoded);
    const int port = url.port(address.m_encrypted ? TLS_PORT : PLAIN_PORT);
    address.m_port = static_cast<quint16>(port);
    address.m_user = url.userName(QUrl::FullyDecoded);

    const QString path = url.path(QUrl::FullyEncoded).mid(1);
    if (path.contains(QLatin1Char('/')))
        return refuse(QStringLiteral("Раздел сервера сообщений содержит знак /: запишите его как "
                                     "%2F."));
    const QString virtualHost = QUrl::fromPercentEncoding(path.toLatin1());
    address.m_virtualHost = virtualHost.isEmpty() ? QStringLiteral("/") : virtualHost;

    const QUrlQuery options(url);
    const auto items = options.queryItems(QUrl::FullyDecoded);
    for (const auto &item : items) {
        if (item.first != CA_OPTION && item.first != PASSWORD_OPTION)
            return refuse(QStringLiteral("В адресе сервера сообщений неизвестный ключ. Есть два: "
                                         "cacert и passwordfile."));
    }
    if (options.hasQueryItem(CA_OPTION) && !address.m_encrypted)
        return refuse(QStringLiteral("Ключ cacert имеет смысл только в адресе amqps://."));
    if (address.m_encrypted) {
        address.m_authorityFile = options.hasQueryItem(CA_OPTION)
            ? options.queryItemValue(CA_OPTION, QUrl::FullyDecoded)
            : systemAuthorities();
        if (!QFileInfo(address.m_authorityFile).isReadable())
            return refuse(
                QStringLiteral("Файл удостоверяющего центра «%1» не читается. Укажите его в "
                               "адресе: ?cacert=ФАЙЛ.")
                    .arg(QDir::toNativeSeparators(address.m_authorityFile)));
    }
    const std::optional<QString> password = findPassword(url, options, error);
    if (!password)
        return std::nullopt;
    address.m_password = *password;
    error->clear();
    return address;
}

std::optional<BrokerAddress> BrokerAddress::parseArgument(const QString &text, QString *error)
{
    const std::optional<BrokerAddress> address = parse(text, error);
    qunsetenv(PASSWORD_VARIABLE);
    if (!QUrl(text.trimmed(), QUrl::StrictMode).password().isEmpty()) {
        *error = QStringLiteral(
                     "Пароль к серверу сообщений стоит в командной строке, где его видят все "
                     "пользователи этой машины. Смените его и укажите в переменной %1 или в файле "
                     "(?passwordfile=ФАЙЛ).")
                     .arg(QLatin1String(PASSWORD_VARIABLE));
        return std::nullopt;
    }
    return address;
}

bool BrokerAddress::isLoopback() const
{
    return m_host == QLatin1String("localhost") || m_host.startsWith(QLatin1String("127."))
        || m_host == QLatin1String("::1");
}

QString BrokerAddress::toDisplayString() const
{
    QUrl url;
    url.setScheme(m_encrypted ? QStringLiteral("amqps") : QStringLiteral("amqp"));
    url.setHost(m_host);
    url.setPort(m_port);
    url.setUserName(m_user, QUrl::DecodedMode);
    url.setPath(QLatin1Char('/') + QString::fromLatin1(QUrl::toPercentEncoding(m_virtualHost)),
                QUrl::StrictMode);
    return url.toString();
}
