#include <actingcharacters.h>
#include <hostiletexts.h>

#include <temporaryterminal.h>
#include <ui/devicealert.h>
#include <ui/devicespage.h>

#include <molvacore/cardreadersettings.h>

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QToolTip>

#include <memory>

/// A state of the card terminal that nobody knows and that holds a hostile text: the window and the
/// alert show it plainly, read and fetch nothing, and lead back to a sound device.
class TestHostileDevices : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Canary> m_canary;
    TemporaryTerminal m_context;

    static void verifyPlain(const QString &text)
    {
        QVERIFY2(text.size() < 1000, qPrintable(QString::number(text.size())));
        QCOMPARE(actingCharacters(text, QStringLiteral("\u200b\n")), QString());
    }

private slots:
    void init()
    {
        m_canary = std::make_unique<Canary>();
        QVERIFY2(m_context.open(), qPrintable(m_context.error()));
    }

    void cleanup()
    {
        QToolTip::hideText();
        QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
        m_context.close();
        QVERIFY2(m_canary->untouched(), qPrintable(m_canary->report()));
    }

    void unknownStateIsShownPlainly_data()
    {
        QTest::addColumn<QString>("text");
        for (const HostileTexts::Named &row : HostileTexts::all())
            QTest::newRow(row.first) << row.second;
    }

    void unknownStateIsShownPlainly()
    {
        QFETCH(QString, text);
        const QString hostile = HostileTexts::pointingAt(*m_canary, text);
        CardReaderSettings settings;
        settings.setOutcome(hostile);
        QVERIFY(settings.save());
        DeviceControl &control = m_context->devices();
        DevicesPage page(control);
        page.resize(1000, 700);
        page.show();
        QVERIFY(QTest::qWaitForWindowActive(&page));
        page.grab();
        QCOMPARE(page.size(), QSize(1000, 700));
        const auto *effect = page.findChild<QLabel *>(QStringLiteral("lEffect_card"));
        QVERIFY(effect);
        QCOMPARE(effect->textFormat(), Qt::PlainText);
        verifyPlain(effect->text());

        DeviceAlert alert(control);
        alert.resize(600, 30);
        alert.show();
        alert.grab();
        QCOMPARE(alert.width(), 600);
        verifyPlain(alert.text());
        QVERIFY(!alert.toolTip().contains(QLatin1Char('<')));
        QVERIFY(alert.toolTip().size() < 5000);
        QToolTip::showText(QPoint(10, 10), alert.toolTip(), &alert);
        QToolTip::hideText();

        // What is said about a state that cannot be set.
        QVERIFY(!control.setState(Device::Card, hostile));
        QVERIFY(control.error().contains(hostile));

        QTest::mouseClick(page.findChild<QPushButton *>(QStringLiteral("pbDevicesReset")),
                          Qt::LeftButton);
        QVERIFY(!control.isFaulty(Device::Card));
        QCOMPARE(page.findChild<QListWidget *>(QStringLiteral("lw_card"))->currentRow(), 0);
        QVERIFY(!alert.isVisible());
    }
};

QTEST_MAIN(TestHostileDevices)
#include "tst_hostiledevices.moc"
