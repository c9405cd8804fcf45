#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

/// Turns SIGTERM and SIGINT into a signal of the event loop. One at a time in a process.
class TerminationSignal final : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignal(QObject *parent = nullptr);
    ~TerminationSignal() override;

signals:
    void received();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
