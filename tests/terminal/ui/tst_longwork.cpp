#include <ui/longwork.h>

#include <modalanswers.h>

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QSemaphore>
#include <QTest>
#include <QThread>

using Stopping = LongWork::Stopping;

class TestLongWork : public QObject
{
    Q_OBJECT

private:
    static bool run(const LongWork::Work &work, Stopping stopping = Stopping::Waits,
                    QWidget *parent = nullptr)
    {
        return LongWork::run(parent, QStringLiteral("Название"), QStringLiteral("<b>Работа</b>"),
                             work, stopping);
    }

    static void clickStop(QDialog *dialog)
    {
        QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
    }

private slots:
    void cleanup() { QVERIFY(QApplication::topLevelWidgets().isEmpty()); }

    void shortWorkShowsNothing()
    {
        ModalAnswers answers;
        const Qt::HANDLE here = QThread::currentThreadId();
        Qt::HANDLE there = here;
        QVERIFY(run([&](const LongWork::Step &step) {
            there = QThread::currentThreadId();
            return step(0, 1);
        }));
        QVERIFY(there != here);
        QVERIFY(!run([](const LongWork::Step &) { return false; }));
        QVERIFY(answers.seen().isEmpty());
    }

    void progressIsShown()
    {
        QSemaphore seen;
        ModalAnswers answers;
        answers.run([&](QDialog *dialog) {
            const auto *bar = dialog->findChild<QProgressBar *>();
            QTRY_COMPARE(bar->maximum(), 4);
            QTRY_COMPARE(bar->value(), 3);
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Название"));
            const auto *label = dialog->findChild<QLabel *>();
            QCOMPARE(label->text(), QStringLiteral("<b>Работа</b>"));
            QCOMPARE(label->textFormat(), Qt::PlainText);
            seen.release();
        });
        QVERIFY(run([&](const LongWork::Step &step) {
            const bool goOn = step(3, 4);
            seen.acquire();
            return goOn;
        }));
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(answers.pending(), 0);
    }

    void personStopsIt_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("button") << false;
        QTest::newRow("Esc") << true;
    }

    void personStopsIt()
    {
        QFETCH(bool, byKey);
        ModalAnswers answers;
        if (byKey)
            answers.escape();
        else
            answers.run(clickStop);
        bool running = true;
        QVERIFY(!run([&running](const LongWork::Step &step) {
            while (step(0, 0))
                QThread::yieldCurrentThread();
            running = false;
            return false;
        }));
        // Nothing of it goes on.
        QVERIFY(!running);
        QCOMPARE(answers.problems(), QStringList());
    }

    void staysInSightUntilTheWorkHasEnded()
    {
        QSemaphore seen;
        ModalAnswers answers;
        bool shownAgain = false;
        answers.run([&](QDialog *dialog) {
            // As the button of its frame does, which hides any other dialog.
            dialog->close();
            shownAgain = QTest::qWaitFor([dialog] { return dialog->isVisible(); });
            seen.release();
        });
        QVERIFY(!run([&seen](const LongWork::Step &step) {
            while (step(0, 0))
                QThread::yieldCurrentThread();
            seen.acquire();
            return false;
        }));
        QVERIFY(shownAgain);
        QCOMPARE(answers.problems(), QStringList());
    }

    void whatWasDoneWholeAllTheSameIsDone()
    {
        ModalAnswers answers;
        answers.run(clickStop);
        QVERIFY(run([](const LongWork::Step &step) {
            while (step(0, 0))
                QThread::yieldCurrentThread();
            return true;
        }));
    }

    void workThatIsLeftBehindDoesNotHoldThePersonUp()
    {
        ModalAnswers answers;
        answers.run(clickStop);
        struct Gate
        {
            QSemaphore open;
            QSemaphore ended;
        };
        const auto gate = std::make_shared<Gate>();
        QVERIFY(!run(
            [gate](const LongWork::Step &step) {
                gate->open.acquire();
                const bool goOn = step(1, 1);
                gate->ended.release();
                return goOn;
            },
            Stopping::LeavesBehind));
        QVERIFY(!gate->ended.tryAcquire());
        gate->open.release();
        gate->ended.acquire();
        QCOMPARE(answers.problems(), QStringList());
    }

    void onlyTheWindowOfTheWorkIsHeldUp()
    {
        QWidget own;
        own.setAttribute(Qt::WA_GroupLeader);
        auto *field = new QWidget(&own);
        QWidget other;
        other.setAttribute(Qt::WA_GroupLeader);
        own.show();
        other.show();
        ModalAnswers answers;
        bool ownHeld = false;
        bool otherHeld = true;
        answers.run([&](QDialog *dialog) {
            QCOMPARE(dialog->parentWidget(), &own);
            ownHeld = QApplication::activeModalWidget() == dialog
                && dialog->windowModality() == Qt::WindowModal;
            otherHeld = other.isAncestorOf(dialog);
            clickStop(dialog);
        });
        QVERIFY(!run(
            [](const LongWork::Step &step) {
                while (step(0, 0))
                    QThread::yieldCurrentThread();
                return false;
            },
            Stopping::Waits, field));
        QVERIFY(ownHeld && !otherHeld);
    }
};

QTEST_MAIN(TestLongWork)
#include "tst_longwork.moc"
