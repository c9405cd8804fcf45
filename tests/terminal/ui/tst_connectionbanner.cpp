#include <ui/connectionbanner.h>

#include <bus/messagebus.h>

#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>
#include <QtTest>

namespace {

/// A bus whose state a test sets.
class StatedBus final : public MessageBus
{
public:
    bool connected() const override { return m_connected; }
    QString stateText() const override { return text; }
    void sendMessage(const QString &, const QVariant &) override {}

    void set(bool connected, const QString &newText)
    {
        m_connected = connected;
        text = newText;
        emit stateChanged(connected);
    }

    QString text = QStringLiteral("Связь есть");

private:
    bool m_connected = true;
};

} // namespace

class tst_ConnectionBanner : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void takesNoRoomWhileConnected();
    void tellsWhyAndWhatBecomesOfThePayments();
    void appearsWithoutAnyChangeWhenThereNeverWasAConnection();
    void followsTheReasonAndTheCountdown();
    void aConnectionThatIsBackAtOnceShowsNothing();
    void longReasonsAreShownWhole();

private:
    QString shown() const
    {
        return m_banner->findChild<QLabel *>(QStringLiteral("lConnectionBanner"))->text();
    }

    std::unique_ptr<StatedBus> m_bus;
    std::unique_ptr<QWidget> m_window;
    ConnectionBanner *m_banner = nullptr;
};

void tst_ConnectionBanner::init()
{
    m_bus = std::make_unique<StatedBus>();
    m_window = std::make_unique<QWidget>();
    m_banner = new ConnectionBanner(*m_bus, m_window.get());
    auto *layout = new QVBoxLayout(m_window.get());
    layout->addWidget(m_banner);
    layout->addStretch(1);
    m_window->resize(800, 300);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void tst_ConnectionBanner::cleanup()
{
    m_window.reset();
    m_bus.reset();
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_ConnectionBanner::takesNoRoomWhileConnected()
{
    QVERIFY(!m_banner->isVisible());
    m_bus->set(true, QStringLiteral("Связь есть"));
    QVERIFY(!m_banner->isVisible());
}

void tst_ConnectionBanner::tellsWhyAndWhatBecomesOfThePayments()
{
    m_bus->set(false, QStringLiteral("Связи нет: сервер недоступен."));
    QTRY_VERIFY(m_banner->isVisible());
    QVERIFY2(shown().contains(QStringLiteral("сервер недоступен")), qPrintable(shown()));
    QVERIFY2(shown().contains(QStringLiteral("уйдут сами")), qPrintable(shown()));
    m_bus->set(true, QStringLiteral("Связь есть"));
    QVERIFY(!m_banner->isVisible());
}

void tst_ConnectionBanner::appearsWithoutAnyChangeWhenThereNeverWasAConnection()
{
    StatedBus bus;
    bus.set(false, QStringLiteral("Соединение…"));
    const ConnectionBanner banner(bus);
    QTRY_VERIFY(!banner.isHidden());
}

void tst_ConnectionBanner::followsTheReasonAndTheCountdown()
{
    m_bus->set(false, QStringLiteral("Первая причина"));
    QTRY_VERIFY(m_banner->isVisible());
    m_bus->set(false, QStringLiteral("Вторая причина"));
    QVERIFY2(shown().contains(QStringLiteral("Вторая причина")), qPrintable(shown()));
    // The wait for the next attempt runs down without a word from the bus.
    m_bus->text = QStringLiteral("через 3 с");
    QTRY_VERIFY(shown().contains(QStringLiteral("через 3 с")));
}

void tst_ConnectionBanner::aConnectionThatIsBackAtOnceShowsNothing()
{
    m_bus->set(false, QStringLiteral("Связи нет"));
    m_bus->set(true, QStringLiteral("Связь есть"));
    QVERIFY(!m_banner->isVisible());
    QVERIFY(!m_banner->findChild<QTimer *>()->isActive());
}

void tst_ConnectionBanner::longReasonsAreShownWhole()
{
    m_bus->set(false,
               QStringLiteral("Связи с процессингом нет: сертификат сервера сообщений "
                              "выдан не этому серверу или подписан неизвестным центром. "
                              "Повторное подключение через 30 с."));
    QTRY_VERIFY(m_banner->isVisible());
    m_window->resize(640, 300);
    const auto *label = m_banner->findChild<QLabel *>(QStringLiteral("lConnectionBanner"));
    QTRY_VERIFY(label->height() >= label->heightForWidth(label->width()));
}

QTEST_MAIN(tst_ConnectionBanner)
#include "tst_connectionbanner.moc"
