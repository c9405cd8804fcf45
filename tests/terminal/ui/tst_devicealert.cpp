#include <ui/devicealert.h>

#include <temporaryterminal.h>

#include <molvacore/posactivity.h>

#include <QTest>
#include <QTimer>

class TestDeviceAlert : public QObject
{
    Q_OBJECT

private:
    TemporaryTerminal m_context;
    std::unique_ptr<DeviceAlert> m_alert;

private slots:
    void init()
    {
        QVERIFY2(m_context.open(), qPrintable(m_context.error()));
        m_alert = std::make_unique<DeviceAlert>(m_context->devices());
    }

    void cleanup()
    {
        m_alert.reset();
        m_context.close();
    }

    void takesNoRoomWhileAllIsWell()
    {
        QVERIFY(!m_alert->isVisible());
        QCOMPARE(m_alert->text(), QString());
    }

    void namesWhatIsWrong()
    {
        DeviceControl &control = m_context->devices();
        QVERIFY(control.setState(Device::Card, QStringLiteral("decline-51")));
        QVERIFY(m_alert->isVisible());
        QCOMPARE(m_alert->text(), QStringLiteral("карта: Недостаточно средств"));
        QVERIFY(control.setState(Device::Billing, QStringLiteral("silence")));
        QCOMPARE(m_alert->text(),
                 QStringLiteral("карта: Недостаточно средств · биллинг: Не отвечает"));
        QVERIFY(control.reset());
        QVERIFY(!m_alert->isVisible());
    }

    void givesWayToWhatElseStandsThere()
    {
        DeviceControl &control = m_context->devices();
        QVERIFY(control.setState(Device::Card, QStringLiteral("connection-lost-after")));
        QVERIFY(control.setState(Device::Billing, QStringLiteral("late")));
        QVERIFY(m_alert->minimumSizeHint().width() < m_alert->sizeHint().width() / 4);
        QVERIFY(m_alert->toolTip().contains(QStringLiteral("Опаздывает на один запрос")));
        // Cut short it still shows something, in its own colour.
        m_alert->resize(120, 20);
        const QImage picture = m_alert->grab().toImage();
        int red = 0;
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y)
                red += qRed(picture.pixel(x, y)) > qBlue(picture.pixel(x, y)) + 60 ? 1 : 0;
        }
        QVERIFY(red > 20);
    }

    void tellsThatTheTerminalWaits()
    {
        PosActivity::setSlowTime(1);
        QString meanwhile;
        QTimer::singleShot(0, this, [&] { meanwhile = m_alert->text(); });
        PosActivity::wait();
        QCOMPARE(meanwhile, QStringLiteral("Карточный терминал ждёт карту…"));
        QVERIFY(!m_alert->isVisible());
    }
};

QTEST_MAIN(TestDeviceAlert)
#include "tst_devicealert.moc"
