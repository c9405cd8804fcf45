#pragma once

#include "recordingvfs.h"

#include <QByteArray>
#include <QHash>
#include <QRandomGenerator>
#include <QString>
#include <QVector>

/// The files of a folder as a disk holds them while events happen to them: what was synchronised is
/// there, what was not may be there, in part, or not.
class DiskImage final
{
public:
    /// What a power cut leaves of what was written and not synchronised.
    enum class Cut {
        Nothing,
        Everything,
        /// Some writes, in any order; of some no more than single sectors.
        Some
    };

    static constexpr int SECTOR = 512;

    /// Starts with the files that are in `folder`.
    explicit DiskImage(const QString &folder);

    void apply(const RecordingVfs::Event &event);
    /// Writes what the disk would hold after a power cut now into another folder. False when that
    /// fails.
    bool writeTo(const QString &folder, Cut cut, QRandomGenerator *random) const;

private:
    struct File
    {
        bool exists = false;
        QByteArray content;
        /// Since the last synchronisation.
        QVector<RecordingVfs::Event> pending;
    };

    static void change(File *file, const RecordingVfs::Event &event);
    static void changeInPart(File *file, const RecordingVfs::Event &event,
                             QRandomGenerator *random);

    QString m_folder;
    QHash<QString, File> m_files;
};
