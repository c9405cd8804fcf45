#include <recovery/privatedata.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

int modeOf(const QString &path)
{
    struct stat status = {};
    return ::stat(qPrintable(path), &status) == 0 ? int(status.st_mode & 07777) : -1;
}

bool make(const QString &path, int mode)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && ::chmod(qPrintable(path), mode_t(mode)) == 0;
}

} // namespace

class tst_PrivateData : public QObject
{
    Q_OBJECT

private slots:
    void makesAPrivateFolder();
    void closesAnOpenDataFolder();
    void leavesAFolderWithOtherFiles();
    void refusesWhatCannotBeMade();
    void hardensTheProcess();
};

void tst_PrivateData::makesAPrivateFolder()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a/данные"));
    QVERIFY(PrivateData::closeFolder(path));
    QCOMPARE(modeOf(path), 0700);
}

void tst_PrivateData::closesAnOpenDataFolder()
{
    QTemporaryDir folder;
    const QStringList names{QStringLiteral("payments.sqlite"),
                            QStringLiteral("payments.sqlite-wal"),
                            QStringLiteral("payments.sqlite-shm"), QStringLiteral("trace.log")};
    for (const QString &name : names)
        QVERIFY(make(folder.filePath(name), 0644));
    QVERIFY(::chmod(qPrintable(folder.path()), 0755) == 0);
    QVERIFY(PrivateData::closeFolder(folder.path()));
    QCOMPARE(modeOf(folder.path()), 0700);
    for (const QString &name : names)
        QCOMPARE(modeOf(folder.filePath(name)), 0600);
}

void tst_PrivateData::leavesAFolderWithOtherFiles()
{
    QTemporaryDir folder;
    QVERIFY(make(folder.filePath(QStringLiteral("report.txt")), 0644));
    QVERIFY(make(folder.filePath(QStringLiteral("payments.sqlite")), 0664));
    QVERIFY(::chmod(qPrintable(folder.path()), 0755) == 0);
    QVERIFY(PrivateData::closeFolder(folder.path()));
    QCOMPARE(modeOf(folder.path()), 0755);
    QCOMPARE(modeOf(folder.filePath(QStringLiteral("report.txt"))), 0644);
    QCOMPARE(modeOf(folder.filePath(QStringLiteral("payments.sqlite"))), 0600);
}

void tst_PrivateData::refusesWhatCannotBeMade()
{
    QTemporaryDir folder;
    QVERIFY(make(folder.filePath(QStringLiteral("file")), 0600));
    QVERIFY(!PrivateData::closeFolder(folder.filePath(QStringLiteral("file/data"))));
}

void tst_PrivateData::hardensTheProcess()
{
    PrivateData::hardenProcess();
    rlimit limit = {1, 1};
    QCOMPARE(::getrlimit(RLIMIT_CORE, &limit), 0);
    QCOMPARE(limit.rlim_cur, rlim_t(0));
    QCOMPARE(limit.rlim_max, rlim_t(0));
    QCOMPARE(::prctl(PR_GET_DUMPABLE), 0);
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("new")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(modeOf(file.fileName()), 0600);
}

QTEST_GUILESS_MAIN(tst_PrivateData)
#include "tst_privatedata.moc"
