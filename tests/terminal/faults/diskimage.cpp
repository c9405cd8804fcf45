#include "diskimage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

using Event = RecordingVfs::Event;

DiskImage::DiskImage(const QString &folder) : m_folder(QDir(folder).absolutePath())
{
    const QFileInfoList files =
        QDir(folder).entryInfoList({QStringLiteral("*.sqlite*")}, QDir::Files);
    for (const QFileInfo &info : files) {
        QFile file(info.filePath());
        if (file.open(QIODevice::ReadOnly))
            m_files.insert(info.absoluteFilePath(), {true, file.readAll(), {}});
    }
}

void DiskImage::change(File *file, const Event &event)
{
    switch (event.kind) {
    case Event::Kind::Write:
        file->exists = true;
        if (file->content.size() < event.offset + event.data.size())
            file->content.append(int(event.offset) + event.data.size() - file->content.size(),
                                 '\0');
        file->content.replace(int(event.offset), event.data.size(), event.data);
        break;
    case Event::Kind::Truncate:
        file->content.truncate(int(event.offset));
        break;
    case Event::Kind::Delete:
        file->exists = false;
        file->content.clear();
        break;
    case Event::Kind::Sync:
    case Event::Kind::Note:
        break;
    }
}

void DiskImage::changeInPart(File *file, const Event &event, QRandomGenerator *random)
{
    if (event.kind != Event::Kind::Write) {
        change(file, event);
        return;
    }
    for (int at = 0; at < event.data.size();) {
        // To the end of the disk's sector.
        const int size =
            std::min(event.data.size() - at, int(SECTOR - (event.offset + at) % SECTOR));
        if (random->bounded(2) == 0)
            change(file, {event.kind, event.file, event.offset + at, event.data.mid(at, size)});
        at += size;
    }
}

void DiskImage::apply(const Event &event)
{
    if (event.kind == Event::Kind::Note)
        return;
    File &file = m_files[event.file];
    if (event.kind != Event::Kind::Sync) {
        file.pending.append(event);
        return;
    }
    file.exists = true;
    for (const Event &each : qAsConst(file.pending))
        change(&file, each);
    file.pending.clear();
}

bool DiskImage::writeTo(const QString &folder, Cut cut, QRandomGenerator *random) const
{
    for (auto it = m_files.cbegin(); it != m_files.cend(); ++it) {
        File file = it.value();
        for (const Event &event : it->pending) {
            if (cut == Cut::Everything || (cut == Cut::Some && random->bounded(3) == 0))
                change(&file, event);
            else if (cut == Cut::Some && random->bounded(2) == 0)
                changeInPart(&file, event, random);
        }
        if (!file.exists)
            continue;
        QFile target(QDir(folder).filePath(QFileInfo(it.key()).fileName()));
        if (!target.open(QIODevice::WriteOnly) || target.write(file.content) != file.content.size())
            return false;
    }
    return true;
}
