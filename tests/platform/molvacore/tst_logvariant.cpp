#include "messagelog.h"

#include <molvacore/logvariant.h>

#include <QDateTime>
#include <QSize>
#include <QTest>

class tst_LogVariant : public QObject
{
    Q_OBJECT

private slots:
    void rendering_data();
    void rendering();
    void oneLineInTheLog();
    void deepNesting();
};

void tst_LogVariant::rendering_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QVariant &value, const QString &text) {
        QTest::newRow(name) << value << text;
    };
    row("nothing", QVariant(), QStringLiteral("null"));
    row("text by itself", QStringLiteral("Счёт \"1\""), QStringLiteral("Счёт \"1\""));
    row("text with a line end", QStringLiteral("a\nb\u2028c"), QStringLiteral("a\\nb\\u2028c"));
    // The neighbours of what is escaped, and letters whose lower byte is that of a control
    // character, a quote or a backslash.
    row("controls and their neighbours",
        QString::fromUtf16(u"\u001f\u0020\u007e\u007f\u0080\u009f\u00a0\u2027\u2028\u2029\u202a"
                           u"\u0122\u0422\u045c\u0409"),
        QString::fromUtf16(u"\\u001f \u007e\\u007f\\u0080\\u009f\u00a0\u2027\\u2028\\u2029\u202a"
                           u"\u0122\u0422\u045c\u0409"));
    row("the same between quotes",
        QStringList{QString::fromUtf16(u"\u007e\u007f\u00a0\u0422\u045c\u2029")},
        QString::fromUtf16(u"[\"\u007e\\u007f\u00a0\u0422\u045c\\u2029\"]"));
    row("number", 12, QStringLiteral("12"));
    row("negative 64-bit number", Q_INT64_C(-9007199254740993),
        QStringLiteral("-9007199254740993"));
    row("double", 1.15, QStringLiteral("1.15"));
    row("boolean", true, QStringLiteral("true"));
    row("empty list", QVariantList(), QStringLiteral("[]"));
    row("empty map", QVariantMap(), QStringLiteral("{}"));
    row("string list", QStringList{QStringLiteral("a"), QStringLiteral("b\"")},
        QStringLiteral("[\"a\",\"b\\\"\"]"));
    row("nested",
        QVariantList{
            QVariantMap{{QStringLiteral("name"), QStringLiteral("Вода\t\\")},
                        {QStringLiteral("paramList"), QVariantList{1, QVariant(), false}}}},
        QStringLiteral("[{\"name\":\"Вода\\t\\\\\",\"paramList\":[1,null,false]}]"));
    row("bytes", QByteArray("abc"), QStringLiteral("\"abc\""));
    row("date", QDate(2026, 1, 2), QStringLiteral("\"2026-01-02\""));
    row("no text form", QSize(1, 2), QStringLiteral("<QSize>"));
}

void tst_LogVariant::rendering()
{
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    QCOMPARE(logvariant(value).toString(), text);
}

void tst_LogVariant::oneLineInTheLog()
{
    MessageLog log;
    qWarning() << logvariant(QVariantList{QStringLiteral("a\nb")}) << "next"
               << QStringLiteral("quoted");
    QCOMPARE(log.messages().size(), 1);
    QCOMPARE(log.messages().first().text, QStringLiteral("[\"a\\nb\"] next \"quoted\""));
}

void tst_LogVariant::deepNesting()
{
    QVariant value = 1;
    for (int i = 0; i < 1000; ++i)
        value = QVariantList{value};
    QCOMPARE(logvariant(value).toString().size(), 2001);
}

QTEST_GUILESS_MAIN(tst_LogVariant)
#include "tst_logvariant.moc"
