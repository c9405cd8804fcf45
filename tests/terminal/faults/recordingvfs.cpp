#include "recordingvfs.h"

#include <QFile>

#include <sqlite3.h>

namespace {

using Event = RecordingVfs::Event;

/// What the engine's callbacks, which are plain functions, write to.
struct Recorder
{
    sqlite3_vfs *real = nullptr;
    sqlite3_vfs own = {};
    QVector<Event> events;
    bool recording = false;

    void add(Event::Kind kind, const QString &file, qint64 offset = 0,
             const QByteArray &data = QByteArray())
    {
        if (recording)
            events.append({kind, file, offset, data});
    }
};

/// For ever: a database that is closed late still goes through the callbacks.
Recorder &recorder()
{
    static Recorder only;
    return only;
}

/// The engine gives us one block for each open file: this, and behind it the real file.
struct OwnFile
{
    sqlite3_file base;
    QString *name;
    sqlite3_file *real;
};

OwnFile *own(sqlite3_file *file)
{
    return reinterpret_cast<OwnFile *>(file);
}

sqlite3_file *real(sqlite3_file *file)
{
    return own(file)->real;
}

int closeFile(sqlite3_file *file)
{
    const int result = real(file)->pMethods ? real(file)->pMethods->xClose(real(file)) : SQLITE_OK;
    delete own(file)->name;
    own(file)->name = nullptr;
    return result;
}

int readFile(sqlite3_file *file, void *data, int size, sqlite3_int64 offset)
{
    return real(file)->pMethods->xRead(real(file), data, size, offset);
}

int writeFile(sqlite3_file *file, const void *data, int size, sqlite3_int64 offset)
{
    const int result = real(file)->pMethods->xWrite(real(file), data, size, offset);
    if (result == SQLITE_OK)
        recorder().add(Event::Kind::Write, *own(file)->name, offset,
                       QByteArray(static_cast<const char *>(data), size));
    return result;
}

int truncateFile(sqlite3_file *file, sqlite3_int64 size)
{
    const int result = real(file)->pMethods->xTruncate(real(file), size);
    if (result == SQLITE_OK)
        recorder().add(Event::Kind::Truncate, *own(file)->name, size);
    return result;
}

int syncFile(sqlite3_file *file, int flags)
{
    const int result = real(file)->pMethods->xSync(real(file), flags);
    if (result == SQLITE_OK)
        recorder().add(Event::Kind::Sync, *own(file)->name);
    return result;
}

int fileSize(sqlite3_file *file, sqlite3_int64 *size)
{
    return real(file)->pMethods->xFileSize(real(file), size);
}

int lockFile(sqlite3_file *file, int level)
{
    return real(file)->pMethods->xLock(real(file), level);
}

int unlockFile(sqlite3_file *file, int level)
{
    return real(file)->pMethods->xUnlock(real(file), level);
}

int checkReservedLock(sqlite3_file *file, int *held)
{
    return real(file)->pMethods->xCheckReservedLock(real(file), held);
}

int fileControl(sqlite3_file *file, int operation, void *argument)
{
    return real(file)->pMethods->xFileControl(real(file), operation, argument);
}

int sectorSize(sqlite3_file *file)
{
    return real(file)->pMethods->xSectorSize(real(file));
}

int deviceCharacteristics(sqlite3_file *)
{
    // A disk that promises nothing: no atomic write, no order, no safe append.
    return 0;
}

int shmMap(sqlite3_file *file, int page, int size, int extend, void volatile **memory)
{
    return real(file)->pMethods->xShmMap(real(file), page, size, extend, memory);
}

int shmLock(sqlite3_file *file, int offset, int count, int flags)
{
    return real(file)->pMethods->xShmLock(real(file), offset, count, flags);
}

void shmBarrier(sqlite3_file *file)
{
    real(file)->pMethods->xShmBarrier(real(file));
}

int shmUnmap(sqlite3_file *file, int remove)
{
    return real(file)->pMethods->xShmUnmap(real(file), remove);
}

// The second version of the interface: without mapping files into memory, which would hide writes.
const sqlite3_io_methods METHODS = {2,
                                    closeFile,
                                    readFile,
                                    writeFile,
                                    truncateFile,
                                    syncFile,
                                    fileSize,
                                    lockFile,
                                    unlockFile,
                                    checkReservedLock,
                                    fileControl,
                                    sectorSize,
                                    deviceCharacteristics,
                                    shmMap,
                                    shmLock,
                                    shmBarrier,
                                    shmUnmap,
                                    nullptr,
                                    nullptr};

int openFile(sqlite3_vfs *, sqlite3_filename name, sqlite3_file *file, int flags, int *outFlags)
{
    OwnFile *opened = own(file);
    opened->real = reinterpret_cast<sqlite3_file *>(opened + 1);
    opened->name = new QString(name ? QFile::decodeName(name) : QString());
    opened->base.pMethods = &METHODS;
    const int result = recorder().real->xOpen(recorder().real, name, opened->real, flags, outFlags);
    if (result != SQLITE_OK) {
        closeFile(file);
        opened->base.pMethods = nullptr;
    }
    return result;
}

int deleteFile(sqlite3_vfs *, const char *name, int syncFolder)
{
    const int result = recorder().real->xDelete(recorder().real, name, syncFolder);
    if (result == SQLITE_OK)
        recorder().add(Event::Kind::Delete, QFile::decodeName(name));
    return result;
}

} // namespace

RecordingVfs::RecordingVfs()
{
    Recorder &here = recorder();
    here.real = sqlite3_vfs_find(nullptr);
    here.own = *here.real;
    here.own.zName = "recording";
    here.own.szOsFile = int(sizeof(OwnFile)) + here.real->szOsFile;
    here.own.xOpen = openFile;
    here.own.xDelete = deleteFile;
    sqlite3_vfs_register(&here.own, 1);
}

RecordingVfs::~RecordingVfs()
{
    sqlite3_vfs_unregister(&recorder().own);
    sqlite3_vfs_register(recorder().real, 1);
    recorder().events.clear();
    recorder().recording = false;
}

void RecordingVfs::setRecording(bool recording)
{
    recorder().recording = recording;
}

void RecordingVfs::note(const QByteArray &text)
{
    recorder().add(Event::Kind::Note, QString(), 0, text);
}

QVector<RecordingVfs::Event> RecordingVfs::events() const
{
    return recorder().events;
}
