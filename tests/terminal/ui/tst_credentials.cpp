#include <app/terminalcontext.h>
#include <bus/amqp/amqpbus.h>
#include <bus/amqp/brokeraddress.h>
#include <ui/mainwindow.h>
#include <ui/recoverydialog.h>

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QMetaProperty>
#include <QTabWidget>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString password = QStringLiteral("geheim-4711");

QStringList textsOf(const QAbstractItemModel &model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row) {
        for (int column = 0; column < model.columnCount(); ++column) {
            for (const int role : {int(Qt::DisplayRole), int(Qt::EditRole), int(Qt::ToolTipRole),
                                   int(Qt::UserRole), int(Qt::AccessibleTextRole)})
                texts.append(model.index(row, column).data(role).toString());
        }
    }
    return texts;
}

/// Every text property: what is shown, tooltips, titles, accessible names, placeholders.
QStringList textsOf(const QObject &object)
{
    QStringList texts;
    const QMetaObject *meta = object.metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QVariant value = meta->property(i).read(&object);
        if (value.userType() == QMetaType::QString)
            texts.append(value.toString());
    }
    if (const auto *view = qobject_cast<const QAbstractItemView *>(&object)) {
        if (view->model())
            texts += textsOf(*view->model());
    }
    if (const auto *tabs = qobject_cast<const QTabWidget *>(&object)) {
        for (int i = 0; i < tabs->count(); ++i)
            texts << tabs->tabText(i) << tabs->tabToolTip(i);
    }
    return texts;
}

/// Whatever a picture of any window could show.
QStringList textsOnScreen()
{
    QStringList texts;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        texts += textsOf(*window);
        for (const QObject *child : window->findChildren<QObject *>())
            texts += textsOf(*child);
    }
    return texts;
}

} // namespace

/// A workstation that logs in to a broker: nothing on screen, and so no picture, holds the
/// password.
class TestCredentials : public QObject
{
    Q_OBJECT

private slots:
    void passwordIsOnNoWindow_data()
    {
        QTest::addColumn<bool>("answers");
        QTest::newRow("nobody listens") << false;
        QTest::newRow("somebody hangs up") << true;
    }

    void passwordIsOnNoWindow()
    {
        QFETCH(bool, answers);
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const quint16 port = server.serverPort();
        int calls = 0;
        connect(&server, &QTcpServer::newConnection, &server, [&server, &calls] {
            ++calls;
            delete server.nextPendingConnection();
        });
        if (!answers)
            server.close();

        QVERIFY(qputenv(BrokerAddress::PASSWORD_VARIABLE, password.toUtf8()));
        QString error;
        const auto address = BrokerAddress::parseArgument(
            QStringLiteral("amqp://box4107@127.0.0.1:%1/payments").arg(port), &error);
        QVERIFY2(address, qPrintable(error));
        QCOMPARE(address->password(), password);
        auto bus = std::make_unique<AmqpBus>(*address);
        QTemporaryDir folder;
        const auto context = TerminalContext::open(folder.path(), &error, std::move(bus));
        QVERIFY2(context, qPrintable(error));
        MainWindow window(*context);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        context->bus().sendMessage(QStringLiteral("/app/box_plugin_check_pay"),
                                   QVariantMap{{QStringLiteral("uid"), QStringLiteral("1")}});
        auto *pages = window.findChild<QTabWidget *>(QStringLiteral("twPages"));
        for (int page = 0; page < pages->count(); ++page)
            pages->setCurrentIndex(page);
        for (QAction *action : window.findChildren<QAction *>()) {
            if (action->shortcut() == Qt::Key_F7 || action->shortcut() == Qt::Key_F8
                || action->shortcut() == (Qt::SHIFT | Qt::Key_F9))
                action->trigger();
        }
        RecoveryDialog dialog(context->reconciler(), context->paysController(), &window);
        dialog.load();
        dialog.show();

        const QString reason = QStringLiteral("Связи с процессингом нет");
        QTRY_VERIFY(context->bus().stateText().startsWith(reason));
        QCOMPARE(calls > 0, answers);
        QTRY_VERIFY(!textsOnScreen().filter(reason).isEmpty());
        const QStringList texts = textsOnScreen();
        // The list is of what is really shown: all windows, the broker, the message on the bus.
        for (const char *shown : {"Шина — ", "Устройства — ", "Сканер — ", "Сверка платежей",
                                  "/app/box_plugin_check_pay", "Квитанци"})
            QVERIFY2(!texts.filter(QString::fromUtf8(shown)).isEmpty(), shown);
        QCOMPARE(texts.filter(password), QStringList());
        const QString encoded = QString::fromLatin1(password.toUtf8().toBase64());
        QCOMPARE(texts.filter(encoded), QStringList());
    }

    void cleanup()
    {
        QVERIFY(qunsetenv(BrokerAddress::PASSWORD_VARIABLE));
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }
};

QTEST_MAIN(TestCredentials)
#include "tst_credentials.moc"
