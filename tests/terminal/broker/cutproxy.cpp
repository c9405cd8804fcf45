#include "cutproxy.h"

#include <QHostAddress>

#include <utility>

CutProxy::CutProxy(quint16 target, QObject *parent) : QObject(parent), m_target(target)
{
    m_server.listen(QHostAddress::LocalHost);
    connect(&m_server, &QTcpServer::newConnection, this, &CutProxy::onConnection);
}

void CutProxy::onConnection()
{
    while (QTcpSocket *client = m_server.nextPendingConnection()) {
        ++m_connections;
        if (m_refusing) {
            client->abort();
            client->deleteLater();
            continue;
        }
        auto *broker = new QTcpSocket(this);
        client->setParent(this);
        m_pairs.append(Pair{client, broker});
        connect(client, &QTcpSocket::readyRead, this, [this, client, broker] {
            const QByteArray bytes = client->readAll();
            m_clientBytes += bytes.size();
            broker->write(bytes);
        });
        connect(broker, &QTcpSocket::readyRead, this, [this, client, broker] {
            const QByteArray bytes = broker->readAll();
            if (!m_brokerMuted)
                client->write(bytes);
        });
        connect(client, &QTcpSocket::disconnected, broker, &QTcpSocket::disconnectFromHost);
        connect(broker, &QTcpSocket::disconnected, client, &QTcpSocket::disconnectFromHost);
        broker->connectToHost(QHostAddress(QHostAddress::LocalHost), m_target);
    }
}

void CutProxy::cut()
{
    const QVector<Pair> pairs = std::exchange(m_pairs, {});
    for (const Pair &pair : pairs) {
        for (QTcpSocket *socket : {pair.client, pair.broker}) {
            socket->disconnect(this);
            socket->abort();
            socket->deleteLater();
        }
    }
}
