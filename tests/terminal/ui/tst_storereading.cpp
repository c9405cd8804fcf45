#include <ui/storereading.h>

#include <modalanswers.h>

#include <basixcore/sqliteschema.h>

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <vector>

namespace {

constexpr qint64 MEBIBYTE = 1024 * 1024;

int pagesOf(qint64 bytes)
{
    return int((bytes + ::sysconf(_SC_PAGESIZE) - 1) / ::sysconf(_SC_PAGESIZE));
}

/// How many pages of the file are in the machine's memory.
int pagesInMemory(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const auto size = size_t(file.size());
    void *map = ::mmap(nullptr, size, PROT_READ, MAP_SHARED, file.handle(), 0);
    if (map == MAP_FAILED)
        return -1;
    std::vector<unsigned char> pages(size_t(pagesOf(file.size())));
    int count = ::mincore(map, size, pages.data()) == 0 ? 0 : -1;
    for (const unsigned char page : pages)
        count += page & 1;
    ::munmap(map, size);
    return count;
}

void putOutOfMemory(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadWrite))
        return;
    ::fsync(file.handle());
    ::posix_fadvise(file.handle(), 0, 0, POSIX_FADV_DONTNEED);
}

} // namespace

class TestStoreReading : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;

    QString make(const QString &name, qint64 bytes) const
    {
        const QString path = m_folder->filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray(int(bytes), 'x')) != bytes)
            qFatal("%s was not written", qPrintable(path));
        return path;
    }

    /// Without its bytes on the disk.
    QString makeHollow(const QString &name, qint64 bytes) const
    {
        const QString path = m_folder->filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || !file.resize(bytes))
            qFatal("%s was not made", qPrintable(path));
        return path;
    }

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void cleanup() { QVERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void bringsTheFilesIntoMemory()
    {
        const qint64 size = 20 * MEBIBYTE + 5;
        const QString file = make(QStringLiteral("payments.sqlite"), size);
        putOutOfMemory(file);
        if (pagesInMemory(file) > 0)
            QSKIP("this file system keeps its files in memory");
        QString error;
        QVERIFY2(StoreReading::run({m_folder->filePath(QStringLiteral("absent")), file}, &error),
                 qPrintable(error));
        QCOMPARE(pagesInMemory(file), pagesOf(size));
    }

    void tellsHowFarItIs()
    {
        const QStringList files{make(QStringLiteral("one"), 2 * MEBIBYTE),
                                make(QStringLiteral("two"), MEBIBYTE + 1)};
        QVector<int> seen;
        QVERIFY(StoreReading::read(files, [&seen](int done, int total) {
            seen.append(done);
            return total == 3;
        }));
        QCOMPARE(seen, (QVector<int>{0, 1, 2, 2, 3}));
    }

    void endsWhenItIsTold()
    {
        int asked = 0;
        QVERIFY(!StoreReading::read({make(QStringLiteral("one"), 3 * MEBIBYTE)},
                                    [&asked](int done, int) {
                                        ++asked;
                                        return done < 1;
                                    }));
        QCOMPARE(asked, 2);
    }

    void onlyWhatOpeningLooksThroughIsRead_data()
    {
        QTest::addColumn<qint64>("bytes");
        QTest::addColumn<bool>("read");
        const qint64 limit = basix::SqliteSchema().wholeFileLimit;
        QTest::newRow("nothing") << qint64(0) << false;
        QTest::newRow("there at once") << 16 * MEBIBYTE - 1 << false;
        QTest::newRow("worth it") << 16 * MEBIBYTE << true;
        QTest::newRow("the largest") << limit << true;
        QTest::newRow("too large") << limit + 1 << false;
    }

    void onlyWhatOpeningLooksThroughIsRead()
    {
        QFETCH(qint64, bytes);
        QFETCH(bool, read);
        bool asked = false;
        QString error;
        QVERIFY(StoreReading::run({makeHollow(QStringLiteral("store"), bytes)}, &error,
                                  [&asked](const QStringList &, const LongWork::Step &) {
                                      asked = true;
                                      return true;
                                  }));
        QCOMPARE(asked, read);
        QCOMPARE(error, QString());
    }

    void tooLargeAFileHidesNoOther()
    {
        const qint64 limit = basix::SqliteSchema().wholeFileLimit;
        const QStringList files{makeHollow(QStringLiteral("large"), limit + 1),
                                make(QStringLiteral("small"), 1)};
        int total = -1;
        QVERIFY(StoreReading::read(files, [&total](int, int all) {
            total = all;
            return true;
        }));
        QCOMPARE(total, 0);
    }

    void personStopsIt()
    {
        ModalAnswers answers;
        QString shown;
        answers.run([&shown](QDialog *dialog) {
            shown = dialog->findChild<QLabel *>()->text();
            QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
        });
        QString error;
        const auto slow = [](const QStringList &, const LongWork::Step &step) {
            while (step(1, 20))
                QThread::yieldCurrentThread();
            return false;
        };
        QVERIFY(
            !StoreReading::run({makeHollow(QStringLiteral("store"), 20 * MEBIBYTE)}, &error, slow));
        QCOMPARE(answers.problems(), QStringList());
        QVERIFY2(shown.contains(QStringLiteral("читаются с диска")), qPrintable(shown));
        QVERIFY2(error.contains(QStringLiteral("прервана")), qPrintable(error));
    }
};

QTEST_MAIN(TestStoreReading)
#include "tst_storereading.moc"
