#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>
#include <QtGlobal>

/// Stands between the database engine of this process and its disk, and writes down, in order,
/// everything that changes a file. From construction to destruction every database that is opened
/// goes through it. One at a time.
class RecordingVfs final
{
public:
    struct Event
    {
        enum class Kind {
            Write,
            Truncate, ///< to `offset` bytes
            Sync,     ///< what was written to this file before is on the disk when this is over
            Delete,
            Note ///< something that this program said, in `data`
        };
        Kind kind = Kind::Note;
        QString file;
        qint64 offset = 0;
        QByteArray data;
    };

    RecordingVfs();
    ~RecordingVfs();
    RecordingVfs(const RecordingVfs &) = delete;
    RecordingVfs &operator=(const RecordingVfs &) = delete;

    void setRecording(bool recording);
    void note(const QByteArray &text);
    QVector<Event> events() const;
};
