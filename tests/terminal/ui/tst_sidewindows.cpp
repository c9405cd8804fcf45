#include <ui/sidewindows.h>

#include <temporaryterminal.h>
#include <ui/mainwindow.h>
#include <windows.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

class TestSideWindows : public QObject
{
    Q_OBJECT

private:
    TemporaryTerminal m_context;
    std::unique_ptr<MainWindow> m_window;

    /// Clicks as a person does: a window that a dialog holds up hears nothing.
    static void clickRow(QListWidget &list, int row)
    {
        const QPoint place = list.visualItemRect(list.item(row)).center();
        QTest::mouseClick(list.window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          list.viewport()->mapTo(list.window(), place));
    }

private slots:
    void init()
    {
        QVERIFY2(m_context.open(), qPrintable(m_context.error()));
        m_window = std::make_unique<MainWindow>(*m_context);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        m_context.close();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void keysOpenThem()
    {
        QVERIFY(!Windows::shownWindow("busWindow"));
        QVERIFY(!Windows::shownWindow("devicesWindow"));
        QTest::keyClick(m_window.get(), Qt::Key_F7);
        QVERIFY(Windows::shownWindow("devicesWindow"));
        QTest::keyClick(Windows::shownWindow("devicesWindow"), Qt::Key_F8);
        QVERIFY(Windows::shownWindow("busWindow"));
    }

    void theyWorkWhileADialogIsOpen()
    {
        QDialog dialog(m_window.get());
        auto *layout = new QVBoxLayout(&dialog);
        auto *field = new QLineEdit(&dialog);
        layout->addWidget(field);
        QString state;
        Qt::WindowModality modality = Qt::NonModal;
        QTimer::singleShot(0, &dialog, [&] {
            modality = dialog.windowModality();
            QTest::keyClick(field, Qt::Key_F7);
            QWidget *devices = Windows::shownWindow("devicesWindow");
            if (devices && QTest::qWaitForWindowExposed(devices))
                clickRow(*devices->findChild<QListWidget *>(QStringLiteral("lw_register")), 4);
            state = m_context->devices().state(Device::Register);
            dialog.reject();
        });
        dialog.exec();
        QCOMPARE(state, QStringLiteral("paper-out"));
        // Window managers keep the focus off every other window for a dialog of the application.
        QCOMPARE(modality, Qt::WindowModal);
    }

    void theyWorkWhileAMessageOverADialogIsOpen()
    {
        QDialog dialog(m_window.get());
        QMessageBox message(&dialog);
        QTimer::singleShot(0, &dialog, [&] {
            QTimer::singleShot(0, &message, [&] {
                QTest::keyClick(&message, Qt::Key_F7);
                QWidget *devices = Windows::shownWindow("devicesWindow");
                if (devices && QTest::qWaitForWindowExposed(devices))
                    clickRow(*devices->findChild<QListWidget *>(QStringLiteral("lw_billing")), 2);
                message.accept();
            });
            message.exec();
            dialog.reject();
        });
        dialog.exec();
        QCOMPARE(m_context->devices().state(Device::Billing), QStringLiteral("silence"));
    }

    void theirDialogsHoldUpNoOtherWindow()
    {
        for (const Qt::Key key : {Qt::Key_F7, Qt::Key_F8}) {
            QTest::keyClick(m_window.get(), key);
            QWidget *side = Windows::shownWindow(key == Qt::Key_F7 ? "devicesWindow" : "busWindow");
            QVERIFY(side);
            QMessageBox message(side);
            Qt::WindowModality modality = Qt::NonModal;
            QTimer::singleShot(0, &message, [&] {
                modality = message.windowModality();
                message.accept();
            });
            message.exec();
            QCOMPARE(modality, Qt::WindowModal);
        }
    }

    void theyCloseWithTheMainWindow()
    {
        QTest::keyClick(m_window.get(), Qt::Key_F7);
        QTest::keyClick(m_window.get(), Qt::Key_F8);
        QVERIFY(m_window->close());
        QVERIFY(!Windows::shownWindow("busWindow"));
        QVERIFY(!Windows::shownWindow("devicesWindow"));
    }
};

QTEST_MAIN(TestSideWindows)
#include "tst_sidewindows.moc"
