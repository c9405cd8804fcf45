#pragma once

#include <QString>
#include <QStringList>
#include <QVector>
#include <QtGlobal>

/// Catches what Qt's logger receives between construction and destruction, with the context of
/// every line.
///
/// Messages still reach the handler that was installed before, so a failing test shows them. One
/// log at a time.
class MessageLog
{
public:
    struct Message
    {
        QtMsgType type = QtDebugMsg;
        QString text;
        QString category;
        QString file;
        QString function;
        int line = 0;
    };

    MessageLog();
    ~MessageLog();
    MessageLog(const MessageLog &) = delete;
    MessageLog &operator=(const MessageLog &) = delete;

    QVector<Message> messages() const;
    /// Messages of one level whose text is exactly `text`.
    int count(QtMsgType type, const QString &text) const;
    /// Messages of one level whose text contains `part`.
    QVector<Message> containing(QtMsgType type, const QString &part) const;
    /// Texts of warnings and worse that contain none of the `allowed` parts.
    QStringList unexpectedWarnings(const QStringList &allowed) const;
    void clear();

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &text);
};
