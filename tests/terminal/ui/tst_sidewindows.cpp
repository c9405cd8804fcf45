#include <ui/sidewindows.h>

#include <app/terminalcontext.h>
#include <ui/mainwindow.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

class TestSideWindows : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<TerminalContext> m_context;
    std::unique_ptr<MainWindow> m_window;

    static QWidget *shown(const char *name)
    {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QLatin1String(name))
                return window->isVisible() ? window : nullptr;
        }
        return nullptr;
    }

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
        m_folder = std::make_unique<QTemporaryDir>();
        QString error;
        m_context = TerminalContext::open(m_folder->path(), &error);
        QVERIFY2(m_context, qPrintable(error));
        m_window = std::make_unique<MainWindow>(*m_context);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        m_context.reset();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void keysOpenThem()
    {
        QVERIFY(!shown("busWindow"));
        QVERIFY(!shown("devicesWindow"));
        QTest::keyClick(m_window.get(), Qt::Key_F7);
        QVERIFY(shown("devicesWindow"));
        QTest::keyClick(shown("devicesWindow"), Qt::Key_F8);
        QVERIFY(shown("busWindow"));
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
            QWidget *devices = shown("devicesWindow");
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
                QWidget *devices = shown("devicesWindow");
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
            QWidget *side = shown(key == Qt::Key_F7 ? "devicesWindow" : "busWindow");
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
        QVERIFY(!shown("busWindow"));
        QVERIFY(!shown("devicesWindow"));
    }
};

QTEST_MAIN(TestSideWindows)
#include "tst_sidewindows.moc"
