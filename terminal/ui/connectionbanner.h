#pragma once

#include <QFrame>
#include <QTimer>

class MessageBus;
class QLabel;

/// Tells the cashier in a line across the window that there is no connection to billing, why, and
/// that what was taken is kept. Takes no room while the connection is there.
class ConnectionBanner final : public QFrame
{
    Q_OBJECT

public:
    /// A connection that is back sooner than this was not worth a word.
    static constexpr int PATIENCE_MS = 500;

    /// `bus` must outlive the banner.
    explicit ConnectionBanner(const MessageBus &bus, QWidget *parent = nullptr);

private:
    void follow();
    void show();

    const MessageBus &m_bus;
    QLabel *m_text;
    /// Runs until the line appears, and then counts the wait for the next attempt.
    QTimer m_timer;
};
