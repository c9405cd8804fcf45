#include "brokerprocess.h"

#include <bus/amqp/amqpconnection.h>
#include <bus/amqp/brokeraddress.h>

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QRandomGenerator>
#include <QSet>
#include <QTcpServer>
#include <QThread>
#include <QUrl>

#include <memory>
#include <vector>

#include <csignal>
#include <unistd.h>

const QString BrokerProcess::PASSWORD = QStringLiteral("Ключ-7f3a/9%q");
const QStringList BrokerProcess::VIRTUAL_HOSTS{QStringLiteral("selmar"), QStringLiteral("contract"),
                                               QStringLiteral("worker"), QStringLiteral("demo")};

namespace {

const QString SERVER = QStringLiteral("/usr/lib/rabbitmq/bin/rabbitmq-server");
/// Several seconds on a machine that has nothing else to do.
constexpr int START_MS = 300000;

constexpr int END_MS = 10000;

/// What the pipe's end means: the test program is gone, or wants this process gone.
const QString WATCH = QStringLiteral("\"$@\" </dev/null & cat >/dev/null; kill -9 $!; wait");

/// Ports that were free a moment ago, all different.
QVector<quint16> freePorts(int count)
{
    std::vector<std::unique_ptr<QTcpServer>> servers;
    QVector<quint16> ports;
    for (int i = 0; i < count; ++i) {
        servers.push_back(std::make_unique<QTcpServer>());
        servers.back()->listen(QHostAddress::LocalHost);
        ports.append(servers.back()->serverPort());
    }
    return ports;
}

bool write(const QString &name, const QByteArray &text)
{
    QFile target(name);
    return target.open(QIODevice::WriteOnly | QIODevice::Truncate)
        && target.write(text) == text.size();
}

QByteArray passwordHash(const QString &password)
{
    const quint32 random = QRandomGenerator::global()->generate();
    const QByteArray salt(reinterpret_cast<const char *>(&random), sizeof random);
    return (salt + QCryptographicHash::hash(salt + password.toUtf8(), QCryptographicHash::Sha256))
        .toBase64();
}

QJsonObject user(const QString &name, const QString &tags = QString())
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("password_hash"),
             QString::fromLatin1(passwordHash(BrokerProcess::PASSWORD))},
            {QStringLiteral("hashing_algorithm"), QStringLiteral("rabbit_password_hashing_sha256")},
            {QStringLiteral("tags"), tags}};
}

QJsonObject permission(const QString &user, const QString &configure, const QString &write,
                       const QString &read, const QString &virtualHost)
{
    return {{QStringLiteral("user"), user},
            {QStringLiteral("vhost"), virtualHost},
            {QStringLiteral("configure"), configure},
            {QStringLiteral("write"), write},
            {QStringLiteral("read"), read}};
}

QString run(const QStringList &command, const QString &folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(command.constFirst(), command.mid(1));
    if (process.waitForFinished() && process.exitCode() == 0)
        return QString();
    return command.join(QLatin1Char(' ')) + QStringLiteral(": ") + process.errorString()
        + QLatin1Char('\n') + QString::fromLocal8Bit(process.readAll());
}

} // namespace

void BrokerProcess::Group::setupChildProcess()
{
    ::setsid();
}

void BrokerProcess::Group::endNow()
{
    if (state() == NotRunning)
        return;
    const pid_t group = static_cast<pid_t>(processId());
    closeWriteChannel();
    if (waitForFinished(END_MS))
        return;
    ::kill(-group, SIGKILL);
    waitForFinished();
}

BrokerProcess::Group::~Group()
{
    endNow();
}

BrokerProcess::BrokerProcess(int nodes, Tls tls) : m_tls(tls)
{
    const QVector<quint16> ports = freePorts(1 + nodes * 3);
    m_epmdPort = ports.at(0);
    for (int i = 0; i < nodes; ++i) {
        Node node;
        node.name = QStringLiteral("n%1@localhost").arg(i + 1);
        node.folder = file(QStringLiteral("n%1").arg(i + 1));
        node.port = ports.at(1 + i * 3);
        node.tlsPort = ports.at(2 + i * 3);
        node.distributionPort = ports.at(3 + i * 3);
        m_nodes.append(node);
    }
}

BrokerProcess::~BrokerProcess()
{
    for (Node &node : m_nodes)
        node.process.reset();
    m_epmd.reset();
}

std::unique_ptr<BrokerProcess> BrokerProcess::shared(const QString &virtualHost)
{
    QFile file(qEnvironmentVariable("SELMAR_SHARED_BROKER"));
    auto broker = std::make_unique<BrokerProcess>(1, Tls::On);
    broker->m_virtualHost = virtualHost;
    if (!file.open(QIODevice::ReadOnly))
        return broker;
    const QJsonObject ticket = QJsonDocument::fromJson(file.readAll()).object();
    Node &node = broker->m_nodes.first();
    node.port = quint16(ticket.value(QLatin1String("port")).toInt());
    node.tlsPort = quint16(ticket.value(QLatin1String("tlsPort")).toInt());
    broker->m_files = ticket.value(QLatin1String("files")).toString();
    broker->m_isShared = true;
    return broker;
}

QByteArray BrokerProcess::ticket() const
{
    return QJsonDocument(QJsonObject{{QStringLiteral("port"), port()},
                                     {QStringLiteral("tlsPort"), tlsPort()},
                                     {QStringLiteral("files"), m_files}})
        .toJson();
}

QString BrokerProcess::start()
{
    if (m_isShared)
        return QString();
    if (!QFileInfo(SERVER).isExecutable()) {
        return QStringLiteral("Нет %1: эти проверки работают с настоящим сервером сообщений. "
                              "Установите его: apt-get install --no-install-recommends "
                              "rabbitmq-server openssl")
            .arg(SERVER);
    }
    const QString problem = prepare();
    if (!problem.isEmpty())
        return problem;
    m_epmd = std::make_unique<Group>();
    m_epmd->start(QStringLiteral("/bin/sh"),
                  {QStringLiteral("-c"), WATCH, QStringLiteral("epmd"), QStringLiteral("epmd"),
                   QStringLiteral("-port"), QString::number(m_epmdPort), QStringLiteral("-address"),
                   QStringLiteral("127.0.0.1")});
    for (Node &node : m_nodes)
        launch(node);
    for (const Node &node : qAsConst(m_nodes)) {
        const QString failure = waitFor(node);
        if (!failure.isEmpty())
            return failure;
    }
    return QString();
}

QString BrokerProcess::prepare()
{
    if (!m_folder.isValid())
        return m_folder.errorString();
    if (m_tls == Tls::On) {
        const QString problem = makeCertificates();
        if (!problem.isEmpty())
            return problem;
    }
    for (const Node &node : qAsConst(m_nodes)) {
        const QString problem = writeNode(node);
        if (!problem.isEmpty())
            return problem;
    }
    return QString();
}

QString BrokerProcess::makeCertificates() const
{
    const QString curve = QStringLiteral("ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes");
    const QStringList commands{
        QStringLiteral(
            "openssl req -x509 -newkey %1 -keyout ca.key -out ca.pem -days 2 -subj /CN=test-ca")
            .arg(curve),
        QStringLiteral("openssl req -x509 -newkey %1 -keyout foreign.key -out foreign.pem -days 2 "
                       "-subj /CN=foreign-ca")
            .arg(curve),
        QStringLiteral(
            "openssl req -newkey %1 -keyout server.key -out server.csr -subj /CN=localhost")
            .arg(curve),
        QStringLiteral("openssl x509 -req -in server.csr -CA ca.pem -CAkey ca.key -CAcreateserial "
                       "-out server.pem "
                       "-days 2 -extfile server.ext")};
    if (!write(file(QStringLiteral("server.ext")), "subjectAltName=DNS:localhost\n"))
        return QStringLiteral("server.ext");
    for (const QString &command : commands) {
        const QString problem = run(command.split(QLatin1Char(' ')), m_folder.path());
        if (!problem.isEmpty())
            return problem;
    }
    return QString();
}

QByteArray BrokerProcess::definitions() const
{
    const QString nothing = QStringLiteral("^$");
    const QString publish = QStringLiteral("^selmar\\.billing$");
    const QString own = QStringLiteral("^selmar\\.billing");
    const QString all = QStringLiteral(".*");
    const QString answer = QStringLiteral("^(selmar\\.billing.*|amq\\.default)$");
    QJsonArray hosts;
    QJsonArray permissions;
    for (const QString &host : VIRTUAL_HOSTS) {
        hosts.append(QJsonObject{{QStringLiteral("name"), host}});
        for (const QString &box : {QStringLiteral("box1"), QStringLiteral("box2")})
            permissions.append(permission(box, nothing, publish, nothing, host));
        permissions.append(permission(QStringLiteral("worker"), own, answer, own, host));
        permissions.append(permission(QStringLiteral("admin"), all, all, all, host));
    }
    const QJsonObject document{
        {QStringLiteral("vhosts"), hosts},
        {QStringLiteral("users"),
         QJsonArray{user(QStringLiteral("box1")), user(QStringLiteral("box2")),
                    user(QStringLiteral("worker")),
                    user(QStringLiteral("admin"), QStringLiteral("administrator"))}},
        {QStringLiteral("permissions"), permissions}};
    return QJsonDocument(document).toJson();
}

QString BrokerProcess::writeNode(const Node &node) const
{
    const QDir folder(node.folder);
    for (const char *sub : {"data", "log", "home"})
        folder.mkpath(QLatin1String(sub));
    QStringList config{QStringLiteral("listeners.tcp.1 = 127.0.0.1:%1").arg(node.port),
                       QStringLiteral("log.console = false"),
                       QStringLiteral("vm_memory_high_watermark.absolute = 1GB"),
                       QStringLiteral("disk_free_limit.absolute = 50MB"),
                       QStringLiteral("load_definitions = %1")
                           .arg(folder.filePath(QStringLiteral("definitions.json")))};
    if (m_tls == Tls::On) {
        config +=
            {QStringLiteral("listeners.ssl.1 = 127.0.0.1:%1").arg(node.tlsPort),
             QStringLiteral("ssl_options.cacertfile = %1").arg(file(QStringLiteral("ca.pem"))),
             QStringLiteral("ssl_options.certfile = %1").arg(file(QStringLiteral("server.pem"))),
             QStringLiteral("ssl_options.keyfile = %1").arg(file(QStringLiteral("server.key")))};
    }
    if (m_nodes.size() > 1) {
        config += QStringLiteral("cluster_formation.peer_discovery_backend = classic_config");
        for (int i = 0; i < m_nodes.size(); ++i) {
            config += QStringLiteral("cluster_formation.classic_config.nodes.%1 = %2")
                          .arg(QString::number(i + 1), m_nodes.at(i).name);
        }
    }
    const QString cookie = folder.filePath(QStringLiteral("home/.erlang.cookie"));
    const bool written = write(folder.filePath(QStringLiteral("rabbitmq.conf")),
                               config.join(QLatin1Char('\n')).toUtf8() + '\n')
        && write(folder.filePath(QStringLiteral("definitions.json")), definitions())
        && write(folder.filePath(QStringLiteral("enabled_plugins")), "[].\n")
        && write(cookie, "TESTCOOKIE") && QFile::setPermissions(cookie, QFileDevice::ReadOwner);
    return written
        ? QString()
        : QStringLiteral("Не записаны настройки сервера сообщений в %1").arg(node.folder);
}

void BrokerProcess::launch(Node &node)
{
    const QDir folder(node.folder);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QVector<QPair<const char *, QString>> variables{
        {"HOME", folder.filePath(QStringLiteral("home"))},
        {"RABBITMQ_NODENAME", node.name},
        {"RABBITMQ_MNESIA_BASE", folder.filePath(QStringLiteral("data"))},
        {"RABBITMQ_LOG_BASE", folder.filePath(QStringLiteral("log"))},
        {"RABBITMQ_CONFIG_FILE", folder.filePath(QStringLiteral("rabbitmq"))},
        {"RABBITMQ_ENABLED_PLUGINS_FILE", folder.filePath(QStringLiteral("enabled_plugins"))},
        {"RABBITMQ_CONF_ENV_FILE", QStringLiteral("/nonexistent")},
        {"RABBITMQ_PID_FILE", folder.filePath(QStringLiteral("pid"))},
        {"RABBITMQ_DIST_PORT", QString::number(node.distributionPort)},
        // Without this a shell stands between the node and whoever ends it.
        {"RUNNING_UNDER_SYSTEMD", QStringLiteral("true")},
        {"ERL_EPMD_ADDRESS", QStringLiteral("127.0.0.1")},
        {"ERL_EPMD_PORT", QString::number(m_epmdPort)},
        {"RABBITMQ_SERVER_ADDITIONAL_ERL_ARGS",
         // The first three: idle schedulers leave the processor to the other tests.
         QStringLiteral("+sbwt none +sbwtdcpu none +sbwtdio none "
                        "-kernel inet_dist_use_interface {127,0,0,1}")}};
    for (const auto &variable : variables)
        environment.insert(QLatin1String(variable.first), variable.second);
    node.process = std::make_shared<Group>();
    node.process->setProcessEnvironment(environment);
    node.process->setProcessChannelMode(QProcess::MergedChannels);
    node.process->setStandardOutputFile(folder.filePath(QStringLiteral("output")));
    node.process->start(QStringLiteral("/bin/sh"),
                        {QStringLiteral("-c"), WATCH, QStringLiteral("broker"), SERVER});
}

QString BrokerProcess::waitFor(const Node &node) const
{
    QString error;
    const QString text = addressAt(node.port, QStringLiteral("admin"));
    const std::optional<BrokerAddress> target = BrokerAddress::parse(text, &error);
    if (!target)
        return error;
    QElapsedTimer waiting;
    waiting.start();
    AmqpConnection connection;
    while (!waiting.hasExpired(START_MS)) {
        if (connection.open(*target, QStringLiteral("waiting")))
            return QString();
        QThread::msleep(100);
    }
    QFile output(QDir(node.folder).filePath(QStringLiteral("output")));
    const QByteArray log =
        output.open(QIODevice::ReadOnly) ? output.readAll().right(3000) : QByteArray();
    return QStringLiteral("Сервер сообщений %1 не запустился: %2\n%3")
        .arg(node.name, connection.lastError(), QString::fromUtf8(log));
}

QString BrokerProcess::control(const QStringList &arguments)
{
    QProcess process;
    process.setProcessEnvironment(m_nodes.at(0).process->processEnvironment());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("/usr/lib/rabbitmq/bin/rabbitmqctl"), arguments);
    const bool done = process.waitForFinished(START_MS) && process.exitCode() == 0;
    return done ? QString() : QString::fromUtf8(process.readAll());
}

void BrokerProcess::kill9(int node)
{
    m_nodes[node].process->endNow();
}

QString BrokerProcess::restart(int node)
{
    launch(m_nodes[node]);
    return waitFor(m_nodes.at(node));
}

QString BrokerProcess::address(const QString &user, int node) const
{
    return addressAt(port(node), user);
}

QString BrokerProcess::addressAt(quint16 port, const QString &user) const
{
    return QStringLiteral("amqp://%1:%2@127.0.0.1:%3/%4")
        .arg(user, QString::fromLatin1(QUrl::toPercentEncoding(PASSWORD)), QString::number(port),
             m_virtualHost);
}

QString BrokerProcess::encryptedAddress(const QString &user, const QString &authorityFile) const
{
    return QStringLiteral("amqps://%1:%2@localhost:%3/%4?cacert=%5")
        .arg(user, QString::fromLatin1(QUrl::toPercentEncoding(PASSWORD)),
             QString::number(tlsPort()), m_virtualHost, authorityFile);
}
