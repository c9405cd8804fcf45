// The smallest host of a payment plugin: minimalhost PLUGIN [--once ACCOUNT]
#include <basixcore/fixnumber.h>
#include <molvacore/boxcomprofile.h>
#include <molvacore/boxinfo.h>
#include <molvacore/boxinfocontroller.h>
#include <molvacore/comissionsmanager.h>
#include <molvacore/dbconnector.h>
#include <molvacore/frhandler.h>
#include <molvacore/ipaybyproviderplugin.h>
#include <molvacore/ipaydialog.h>
#include <molvacore/ipayscontrollerwrapper.h>
#include <molvacore/paypack.h>
#include <molvacore/provider.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QPluginLoader>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

class Bus final : public QObject
{
    Q_OBJECT

public slots:
    /// A real host posts `data` to `destination` and emits incomingMessage() when the answer comes.
    void sendMessage(const QString &destination, const QVariant &data)
    {
        const QStringList keys = data.toMap().keys();
        QTextStream(stdout) << "to " << destination << ": " << keys.join(QLatin1Char(' ')) << '\n';
        emit asked();
    }

signals:
    void incomingMessage(const QVariantMap &headers, const QString &message);
    void paymentStatus(const QVariant &status);
    void asked();
};

class Register final : public FrHandler
{
public:
    bool getFiscalStatus(QSharedPointer<FsStatus> &status) override
    {
        status.reset(new FsStatus);
        status->setReadyForReceipts(true);
        return true;
    }
    bool doReceipt(const QVariantMap &, const QString &, QVariantMap &, QString &error) override
    {
        error = QStringLiteral("Регистратора нет: чек не напечатан, деньги не принимайте.");
        return false;
    }
};

class Payments final : public IPaysControllerWrapper
{
public:
    /// A real host has the pack on the disk before it answers true.
    bool savePack(const PayPack &, bool) override { return false; }
    bool handOnAtOnce() const override { return false; }
    bool handOn(qint64, QVariantMap &, QString &error) override
    {
        error = QStringLiteral("Пачка не сохранена.");
        return false;
    }
};

/// Types the account, presses the button and, once billing was asked, closes the payment.
void askOnce(Bus &bus, const QString &account, bool &asked)
{
    QTimer::singleShot(0, qApp, [&bus, &asked, account] {
        QWidget *dialog = QApplication::activeModalWidget();
        if (!dialog)
            return QApplication::exit(1);
        auto *number = dialog->findChild<QLineEdit *>(QStringLiteral("leAccount"));
        auto *button = dialog->findChild<QPushButton *>(QStringLiteral("pbGetData"));
        if (!number || !button)
            return QApplication::exit(1);
        QObject::connect(&bus, &Bus::asked, dialog, [dialog, &asked] {
            asked = true;
            QTimer::singleShot(0, dialog, [dialog] { static_cast<QDialog *>(dialog)->reject(); });
        });
        number->setText(account);
        button->click();
        if (!asked)
            static_cast<QDialog *>(dialog)->reject();
    });
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QTemporaryDir data;
    DbConnector::setDatabaseFile(QDir(data.path()).filePath(QStringLiteral("host.sqlite")));
    DbConnector db;
    BoxInfo box;
    box.setBoxId(1);
    box.setCurrency(basix::Currency(643, QStringLiteral("RUB"), QStringLiteral("Рубль")));
    BoxComProfile commission;
    commission.setId(1);
    if (!BoxInfoController(db).setBoxInfo(box)
        || !ComissionsManager(db).setCurrentProfile(commission))
        return 1;

    Bus bus; // outlives the plugin
    QPluginLoader loader(arguments.value(1));
    auto *plugin = qobject_cast<IPayByProviderPlugin *>(loader.instance());
    if (!plugin) {
        QTextStream(stderr) << loader.errorString() << '\n';
        return 1;
    }
    plugin->setInputFont(QApplication::font());
    plugin->setMessageReciever(&bus, SIGNAL(incomingMessage(QVariantMap,QString)));
    plugin->setMessageSender(&bus, SLOT(sendMessage(QString,QVariant)));
    plugin->setPayStatusReciever(&bus, SIGNAL(paymentStatus(QVariant)));
    plugin->setPaysControllerWrapper(new Payments); // the plugin's from here on
    plugin->setFrHandler(new Register);             // so is the register
    plugin->startWorkers(box, box.currency());

    Provider provider;
    provider.setId(18722);
    provider.setWorkProviderId(18722);
    provider.setCheckName(QStringLiteral("Водоканал"));
    QWidget window;
    window.show();
    bool asked = arguments.value(2) != QLatin1String("--once");
    if (!asked)
        askOnce(bus, arguments.value(3), asked);
    if (IPayDialog *dialog = plugin->start(basix::FixNumber(), provider, &window)) {
        dialog->execute();
        delete dialog;
    }
    plugin->stopWorkers();
    return loader.unload() && asked ? 0 : 1;
}

#include "main.moc"
