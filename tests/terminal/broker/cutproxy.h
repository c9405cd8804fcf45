#pragma once

#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <QVector>

/// A cable between a client and the broker that a test can cut.
class CutProxy final : public QObject
{
    Q_OBJECT

public:
    explicit CutProxy(quint16 target, QObject *parent = nullptr);

    quint16 port() const { return m_server.serverPort(); }
    /// Connections that came so far.
    int connections() const { return m_connections; }
    /// Nothing that the broker says gets through any more; what the client says does.
    void muteBroker(bool muted) { m_brokerMuted = muted; }
    /// Bytes of the client that came through, all connections together.
    qint64 clientBytes() const { return m_clientBytes; }
    /// Ends every connection at once, both sides.
    void cut();
    /// Connections are taken and ended at once for as long as this is on.
    void refuse(bool refusing) { m_refusing = refusing; }

private:
    struct Pair
    {
        QTcpSocket *client = nullptr;
        QTcpSocket *broker = nullptr;
    };

    void onConnection();

    QTcpServer m_server;
    quint16 m_target;
    QVector<Pair> m_pairs;
    int m_connections = 0;
    qint64 m_clientBytes = 0;
    bool m_brokerMuted = false;
    bool m_refusing = false;
};
