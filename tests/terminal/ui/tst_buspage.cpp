#include <ui/buspage.h>

#include <bus/busjournal.h>
#include <bus/inprocessbus.h>
#include <bus/messagetext.h>

#include <modalanswers.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

class TestBusPage : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessBus> m_bus;
    std::unique_ptr<BusJournal> m_journal;
    std::unique_ptr<BusPage> m_page;
    std::unique_ptr<QTemporaryDir> m_folder;

    template<class Type>
    Type *child(const char *name) const
    {
        Type *found = m_page->findChild<Type *>(QLatin1String(name));
        Q_ASSERT(found);
        return found;
    }

    QTableView *table() const { return child<QTableView>("tvBus"); }
    QString shown() const { return child<QPlainTextEdit>("teBusMessage")->toPlainText(); }
    int currentRow() const { return table()->currentIndex().row(); }
    void click(const char *name) const
    {
        QTest::mouseClick(child<QPushButton>(name), Qt::LeftButton);
    }
    void chooseRow(int row) const
    {
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          table()->visualRect(table()->model()->index(row, 0)).center());
    }

    void send(const QString &uid)
    {
        m_bus->sendMessage(QStringLiteral("/app/check"), QVariantMap{{QStringLiteral("uid"), uid}});
    }

    /// A request and its answer.
    void exchange(const QString &uid)
    {
        const int before = m_journal->size();
        send(uid);
        QTRY_COMPARE(m_journal->size(), before + 2);
    }

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_bus = std::make_unique<InProcessBus>();
        m_bus->serve(QStringLiteral("/app/check"), [](const QVariantMap &message) {
            InProcessBus::Outcome outcome;
            outcome.answer = InProcessBus::Answer{
                {{MessageBus::MESSAGE_TYPE, QStringLiteral("checkPayStatus")}},
                "{\"uid\":\"" + message.value(QStringLiteral("uid")).toByteArray()
                    + "\",\"fio\":\"Ёлкин\"}",
                0};
            return outcome;
        });
        m_journal = std::make_unique<BusJournal>();
        m_journal->follow(*m_bus);
        m_page = std::make_unique<BusPage>(*m_journal, *m_bus);
        m_page->resize(900, 600);
        m_page->show();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    void cleanup()
    {
        m_page.reset();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void emptyPageOffersNothing()
    {
        QCOMPARE(shown(), QString());
        for (const char *name :
             {"pbBusCopy", "pbBusSave", "pbBusSaveAll", "pbBusReplay", "pbBusPartner"})
            QVERIFY2(!child<QPushButton>(name)->isEnabled(), name);
    }

    void newestMessageIsShownInFull()
    {
        exchange(QStringLiteral("4711"));
        QTRY_COMPARE(currentRow(), 1);
        QTRY_VERIFY(shown().contains(QStringLiteral("\"fio\": \"Ёлкин\"")));
        QVERIFY(shown().contains(QStringLiteral("Ответ на № 1")));
        QTRY_COMPARE(child<QLabel>("lBusCount")->text(), QStringLiteral("Показано 2 из 2"));
    }

    void chosenMessageStaysChosen()
    {
        exchange(QStringLiteral("1"));
        QTRY_COMPARE(currentRow(), 1);
        chooseRow(0);
        QVERIFY(!child<QCheckBox>("cbBusFollow")->isChecked());
        exchange(QStringLiteral("2"));
        QTRY_COMPARE(child<QLabel>("lBusCount")->text(), QStringLiteral("Показано 4 из 4"));
        QCOMPARE(currentRow(), 0);
        child<QCheckBox>("cbBusFollow")->click();
        QCOMPARE(currentRow(), 3);
    }

    void messageChosenByKeysStaysChosen()
    {
        exchange(QStringLiteral("1"));
        QTRY_COMPARE(currentRow(), 1);
        table()->setFocus();
        QTest::keyClick(table(), Qt::Key_Up);
        QCOMPARE(currentRow(), 0);
        exchange(QStringLiteral("2"));
        QTRY_VERIFY(shown().contains(QStringLiteral("Ответ — № 2")));
        QTRY_COMPARE(table()->model()->rowCount(), 4);
        QCOMPARE(currentRow(), 0);
        QVERIFY(!child<QCheckBox>("cbBusFollow")->isChecked());
    }

    void chosenRequestShowsTheAnswerThatCameLater()
    {
        m_bus->setDelay(1);
        send(QStringLiteral("1"));
        QTRY_VERIFY(shown().contains(QStringLiteral("Ответа ещё нет")));
        chooseRow(0);
        child<QCheckBox>("cbBusFollow")->setChecked(false);
        QTRY_VERIFY(shown().contains(QStringLiteral("Ответ — № 2")));
        QCOMPARE(currentRow(), 0);
    }

    void whatWasLeftForLaterIsShownAtOnce()
    {
        send(QStringLiteral("1"));
        QTRY_VERIFY(shown().contains(QStringLiteral("ответа ещё нет")));
        BusMessage answer;
        answer.direction = BusMessage::Direction::Incoming;
        answer.body = QByteArray(R"({"uid":"1"})");
        m_bus->replay(answer);
        QVERIFY(!shown().contains(QStringLiteral("Ответ на № 1")));
        m_page->settle();
        QVERIFY2(shown().contains(QStringLiteral("ответ на № 1"), Qt::CaseInsensitive),
                 qPrintable(shown()));
    }

    void requestAndAnswerLeadToEachOther()
    {
        exchange(QStringLiteral("1"));
        QTRY_COMPARE(currentRow(), 1);
        QTRY_VERIFY(child<QPushButton>("pbBusPartner")->isEnabled());
        QCOMPARE(child<QPushButton>("pbBusPartner")->text(), QStringLiteral("К &запросу"));
        click("pbBusPartner");
        QCOMPARE(currentRow(), 0);
        QCOMPARE(child<QPushButton>("pbBusPartner")->text(), QStringLiteral("К о&твету"));
        click("pbBusPartner");
        QCOMPARE(currentRow(), 1);
    }

    void partnerThatIsFilteredAwayIsFoundAllTheSame()
    {
        exchange(QStringLiteral("1"));
        child<QLineEdit>("leBusFilter")->setText(QStringLiteral("checkPayStatus"));
        QTRY_COMPARE(table()->model()->rowCount(), 1);
        click("pbBusPartner");
        QCOMPARE(table()->model()->rowCount(), 2);
        QCOMPARE(currentRow(), 0);
    }

    void searchNarrowsTheList()
    {
        exchange(QStringLiteral("1"));
        exchange(QStringLiteral("4711"));
        QTest::keyClicks(child<QLineEdit>("leBusFilter"), QStringLiteral("4711"));
        QTRY_COMPARE(table()->model()->rowCount(), 2);
        QCOMPARE(child<QLabel>("lBusCount")->text(), QStringLiteral("Показано 2 из 4"));
        QVERIFY(shown().contains(QStringLiteral("4711")));
        child<QLineEdit>("leBusFilter")->clear();
        QTest::keyClick(child<QLineEdit>("leBusFilter"), Qt::Key_Return);
        QCOMPARE(table()->model()->rowCount(), 4);
    }

    void pausedListStandsStillAndSaysWhatCame()
    {
        exchange(QStringLiteral("1"));
        QTRY_COMPARE(currentRow(), 1);
        click("pbBusPause");
        exchange(QStringLiteral("2"));
        QTRY_COMPARE(child<QLabel>("lBusCount")->text(),
                     QStringLiteral("Показано 2 из 2. Список остановлен, за это время пришло: 2"));
        QCOMPARE(currentRow(), 1);
        click("pbBusPause");
        QCOMPARE(table()->model()->rowCount(), 4);
        QCOMPARE(currentRow(), 3);
    }

    void answerIsDeliveredOnceMore()
    {
        exchange(QStringLiteral("1"));
        QTRY_COMPARE(currentRow(), 1);
        QSignalSpy incoming(m_bus.get(), &MessageBus::incomingMessage);
        click("pbBusReplay");
        QCOMPARE(incoming.count(), 1);
        QCOMPARE(incoming.at(0).at(1).toString(),
                 QStringLiteral("{\"uid\":\"1\",\"fio\":\"Ёлкин\"}"));
        QTRY_COMPARE(currentRow(), 2);
        QTRY_VERIFY(shown().contains(QStringLiteral("Повторён вручную, ответ на № 1")));
        chooseRow(0);
        QVERIFY(!child<QPushButton>("pbBusReplay")->isEnabled());
    }

    void chosenMessageIsCopiedWhole()
    {
        exchange(QStringLiteral("1"));
        QTRY_COMPARE(currentRow(), 1);
        click("pbBusCopy");
        const QString whole = MessageText::whole(m_journal->at(1));
        QCOMPARE(QApplication::clipboard()->text(), whole);
        QApplication::clipboard()->clear();
        table()->setFocus();
        QTest::keyClick(table(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), whole);
    }

    void messagesAreSaved_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("first");
        QTest::newRow("chosen") << QStringLiteral("pbBusSave") << 1;
        QTest::newRow("all") << QStringLiteral("pbBusSaveAll") << 0;
    }

    void messagesAreSaved()
    {
        QFETCH(QString, button);
        QFETCH(int, first);
        exchange(QStringLiteral("1"));
        QTRY_COMPARE(currentRow(), 1);
        const QString name = m_folder->filePath(QStringLiteral("шина.jsonl"));
        m_page->setAskFile([name](const QString &, const QString &) { return name; });
        click(button.toLatin1().constData());
        QFile file(name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray expected;
        for (int i = first; i < 2; ++i)
            expected += MessageText::jsonLine(m_journal->at(i)) + '\n';
        QCOMPARE(file.readAll(), expected);
    }

    void fileThatCannotBeWrittenIsReported()
    {
        exchange(QStringLiteral("1"));
        QTRY_COMPARE(currentRow(), 1);
        m_page->setAskFile(
            [](const QString &, const QString &) { return QStringLiteral("/absent/%1.json"); });
        ModalAnswers answers;
        answers.ok();
        click("pbBusSave");
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(answers.seen().size(), 1);
        QVERIFY(answers.seen().at(0).text.contains(QStringLiteral("/absent/%1.json")));
    }

    void cancelledSavingWritesNothing()
    {
        exchange(QStringLiteral("1"));
        QTRY_COMPARE(currentRow(), 1);
        m_page->setAskFile([](const QString &, const QString &) { return QString(); });
        click("pbBusSaveAll");
        QVERIFY(QDir(m_folder->path()).isEmpty());
    }

    void stoppedSavingLeavesTheFileAsItWas()
    {
        const QString name = m_folder->filePath(QStringLiteral("шина.jsonl"));
        QFile kept(name);
        QVERIFY(kept.open(QIODevice::WriteOnly) && kept.write("kept") == 4);
        kept.close();
        QByteArray values;
        for (int i = 0; i < 3000; ++i)
            values += "{\"name\":\"x\"},";
        values.chop(1);
        BusMessage message;
        message.direction = BusMessage::Direction::Incoming;
        message.body = "[" + values + "]";
        for (int i = 0; i < BusJournal::MOST_MESSAGES / 2; ++i)
            m_bus->replay(message);
        m_page->setAskFile([name](const QString &, const QString &) { return name; });
        ModalAnswers answers;
        QString shown;
        answers.run([&shown](QDialog *dialog) {
            shown = dialog->findChild<QLabel *>()->text();
            QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
        });
        click("pbBusSaveAll");
        QCOMPARE(answers.problems(), QStringList());
        QCOMPARE(answers.pending(), 0);
        QCOMPARE(shown, QStringLiteral("Пишется файл «шина.jsonl»."));
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), QByteArray("kept"));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 1);
    }

    void clearEmptiesTheJournal()
    {
        exchange(QStringLiteral("1"));
        click("pbBusClear");
        QCOMPARE(m_journal->size(), 0);
        QTRY_COMPARE(shown(), QString());
        QTRY_VERIFY(!child<QPushButton>("pbBusSaveAll")->isEnabled());
    }

    void burstShowsItsLastMessageOnly()
    {
        QSignalSpy changed(child<QPlainTextEdit>("teBusMessage")->document(),
                           &QTextDocument::contentsChanged);
        for (int i = 0; i < 100; ++i)
            send(QString::number(i));
        QTRY_COMPARE(m_journal->size(), 200);
        QTRY_COMPARE(currentRow(), 199);
        QTRY_VERIFY(shown().contains(QStringLiteral("\"uid\": \"99\"")));
        QVERIFY2(changed.count() < 50, qPrintable(QString::number(changed.count())));
    }
};

QTEST_MAIN(TestBusPage)
#include "tst_buspage.moc"
