#include <app/optionvalues.h>

#include <QTest>

class TestOptionValues : public QObject
{
    Q_OBJECT

private slots:
    void saysWhatIsMissing_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("missing"); ///< the option's name
        QTest::newRow("nothing given") << QString() << QString();
        QTest::newRow("apart") << "--card approve" << QString();
        QTest::newRow("with the sign of equality") << "--card=approve" << QString();
        QTest::newRow("a flag needs none") << "--visible --card approve" << QString();
        QTest::newRow("what another option is called is a value with the sign")
            << "--card=--visible" << QString();
        QTest::newRow("a value with dashes of its own") << "--card --approve" << QString();
        QTest::newRow("a negative number") << "--slow -5" << QString();
        QTest::newRow("an unknown option is another matter") << "--unknown" << QString();
        QTest::newRow("words after the end of options") << "-- --card" << QString();
        QTest::newRow("last") << "--visible --card"
                              << "card";
        QTest::newRow("empty") << "--card="
                               << "card";
        QTest::newRow("a flag follows") << "--card --visible"
                                        << "card";
        QTest::newRow("an option follows") << "--slow --card approve"
                                           << "slow";
        QTest::newRow("an option with its value follows") << "--slow --card=approve"
                                                          << "slow";
        QTest::newRow("the second") << "--card approve --slow"
                                    << "slow";
    }

    void saysWhatIsMissing()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, missing);
        const QList<QCommandLineOption> options{
            QCommandLineOption(QStringLiteral("card"), QStringLiteral("Состояние: approve."),
                               QStringLiteral("состояние")),
            QCommandLineOption(QStringLiteral("slow"), QStringLiteral("Пауза."),
                               QStringLiteral("мс"), QStringLiteral("0")),
            QCommandLineOption(QStringLiteral("visible"), QStringLiteral("На экране."))};
        const QString text =
            missingOptionValue(options,
                               QStringList(QStringLiteral("program"))
                                   + arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
        const QString expected = missing == QLatin1String("card")
            ? QStringLiteral("Ключу --card нужно значение «состояние». Состояние: approve.")
            : missing.isEmpty() ? QString()
                                : QStringLiteral("Ключу --slow нужно значение «мс». Пауза.");
        QCOMPARE(text, expected);
    }
};

QTEST_GUILESS_MAIN(TestOptionValues)
#include "tst_optionvalues.moc"
