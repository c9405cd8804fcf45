#include <scenario/steprunner.h>

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>

namespace {

StepRunner::Step step(const QString &title, const std::function<bool()> &ready,
                      const std::function<void()> &act)
{
    StepRunner::Step result;
    result.title = title;
    result.ready = ready;
    result.act = act;
    result.deadline = 300;
    return result;
}

bool boxInFront()
{
    return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()) != nullptr;
}

} // namespace

class TestStepRunner : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY(!QApplication::activeModalWidget()); }

    void stepsRunInOrderEachWhenReady()
    {
        StepRunner runner(0);
        QStringList order;
        bool gate = false;
        runner.add(step(QStringLiteral("1"), {}, [&] { order.append(QStringLiteral("1")); }));
        runner.add(step(
            QStringLiteral("2"), [&] { return gate; }, [&] { order.append(QStringLiteral("2")); }));
        runner.add(step(QStringLiteral("3"), {}, [&] { order.append(QStringLiteral("3")); }));
        QSignalSpy finished(&runner, &StepRunner::finished);
        runner.start();
        QTRY_COMPARE(order.size(), 1);
        QCOMPARE(runner.pending(), 2);
        gate = true;
        QTRY_COMPARE(finished.count(), 1);
        QCOMPARE(order,
                 QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
        QVERIFY(!runner.failed());
    }

    void stepsGoOnInsideDialogsThatAnActionOpened()
    {
        StepRunner runner(0);
        QStringList order;
        runner.add(step(QStringLiteral("open"), {}, [&] {
            QMessageBox::information(nullptr, QString(), QStringLiteral("первое"));
            order.append(QStringLiteral("closed"));
        }));
        StepRunner::Step answer = step(QStringLiteral("answer"), boxInFront, [&] {
            order.append(QStringLiteral("answer"));
            static_cast<QMessageBox *>(QApplication::activeModalWidget())->accept();
        });
        answer.expectsMessage = true;
        runner.add(answer);
        runner.add(step(
            QStringLiteral("after"), [&] { return order.contains(QStringLiteral("closed")); },
            [&] { order.append(QStringLiteral("after")); }));
        QSignalSpy finished(&runner, &StepRunner::finished);
        runner.start();
        QTRY_COMPARE(finished.count(), 1);
        QCOMPARE(order,
                 QStringList({QStringLiteral("answer"), QStringLiteral("closed"),
                              QStringLiteral("after")}));
    }

    void stepThatNeverGetsReadyFailsTheRun()
    {
        StepRunner runner(0);
        bool ran = false;
        runner.add(step(
            QStringLiteral("вечный"), [] { return false; }, [&] { ran = true; }));
        QSignalSpy finished(&runner, &StepRunner::finished);
        runner.start();
        QTRY_COMPARE(finished.count(), 1);
        QVERIFY(runner.failed());
        QVERIFY2(runner.failure().contains(QStringLiteral("вечный")), qPrintable(runner.failure()));
        QVERIFY(!ran);
    }

    void unexpectedMessageFailsTheRunWithItsText()
    {
        StepRunner runner(0);
        runner.add(step(QStringLiteral("open"), {}, [] {
            QMessageBox::critical(nullptr, QStringLiteral("Ошибка"), QStringLiteral("Нет бумаги"));
        }));
        runner.add(step(QStringLiteral("next"), [] { return false; }, {}));
        QSignalSpy finished(&runner, &StepRunner::finished);
        runner.start();
        QTRY_COMPARE(finished.count(), 1);
        QVERIFY2(runner.failure().contains(QStringLiteral("Нет бумаги")),
                 qPrintable(runner.failure()));
    }

    void failureClosesEveryDialogOneInsideTheOther()
    {
        StepRunner runner(0);
        int returned = 0;
        runner.add(step(QStringLiteral("outer"), {}, [&] {
            QDialog dialog;
            dialog.exec();
            ++returned;
        }));
        runner.add(step(
            QStringLiteral("inner"), [] { return QApplication::activeModalWidget() != nullptr; },
            [&] {
                QDialog dialog;
                dialog.exec();
                ++returned;
            }));
        runner.add(
            step(QStringLiteral("fail"), {}, [&] { runner.fail(QStringLiteral("довольно")); }));
        QSignalSpy finished(&runner, &StepRunner::finished);
        runner.start();
        QTRY_COMPARE(finished.count(), 1);
        QCOMPARE(returned, 2);
        QCOMPARE(runner.failure(), QStringLiteral("довольно"));
    }

    void onlyTheFirstFailureCounts()
    {
        StepRunner runner(0);
        runner.start();
        runner.fail(QStringLiteral("первая"));
        runner.fail(QStringLiteral("вторая"));
        QCOMPARE(runner.failure(), QStringLiteral("первая"));
        QTRY_VERIFY(runner.isFinished());
    }

    void pauseSeparatesTheSteps()
    {
        StepRunner runner(60);
        QElapsedTimer timer;
        runner.add(step(QStringLiteral("1"), {}, {}));
        runner.add(step(QStringLiteral("2"), {}, {}));
        runner.add(step(QStringLiteral("3"), {}, {}));
        QSignalSpy finished(&runner, &StepRunner::finished);
        timer.start();
        runner.start();
        QTRY_COMPARE(finished.count(), 1);
        QVERIFY(timer.elapsed() >= 120);
    }
};

QTEST_MAIN(TestStepRunner)
#include "tst_steprunner.moc"
