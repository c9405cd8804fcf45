#include <bus/crossedfields.h>
#include <bus/wiretext.h>

#include <QDateTime>
#include <QtTest>

#include <limits>

class tst_CrossedFields : public QObject
{
    Q_OBJECT

private slots:
    void knownValues_data();
    void knownValues();
    void onlyTheTextCanTell_data();
    void onlyTheTextCanTell();
    void onlyAMapCrosses();
    void oneNameTwice();
    void unchangedFieldsAreShared();
    void theOriginalStaysAsItWas();
};

void tst_CrossedFields::knownValues_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("crossed");
    const auto exact = Q_INT64_C(9007199254740992);
    const auto same = [](const char *name, const QVariant &value) {
        QTest::newRow(name) << value << value;
    };
    same("text", QStringLiteral("Ё № «»"));
    same("empty text", QStringLiteral(""));
    same("a byte order mark", QStringLiteral("\ufeffa"));
    same("both halves of a character", QString::fromUtf8("\xf0\x9f\x98\x80"));
    same("yes", true);
    same("null", QVariant::fromValue(nullptr));
    same("64-bit", Q_INT64_C(18722));
    same("2^53", exact);
    same("-2^53", -exact);
    same("list", QVariantList{QStringLiteral("a"), QVariantList{false}});
    same("map", QVariantMap{{QStringLiteral("b"), QStringLiteral("c")}});
    same("no elements", QVariantList());
    same("no fields", QVariantMap());
    QTest::newRow("null text") << QVariant(QString()) << QVariant(QStringLiteral(""));
    QTest::newRow("nothing") << QVariant() << QVariant::fromValue(nullptr);
    QTest::newRow("no bool yet") << QVariant(QVariant::Bool) << QVariant(false);
    QTest::newRow("no number yet") << QVariant(QVariant::LongLong) << QVariant(qlonglong(0));
    QTest::newRow("int") << QVariant(643) << QVariant(qlonglong(643));
    QTest::newRow("unsigned int") << QVariant(std::numeric_limits<uint>::max())
                                  << QVariant(qlonglong(4294967295));
    QTest::newRow("beyond 2^53") << QVariant(exact + 1)
                                 << QVariant(QStringLiteral("9007199254740993"));
    QTest::newRow("below -2^53") << QVariant(-exact - 1)
                                 << QVariant(QStringLiteral("-9007199254740993"));
    QTest::newRow("inside a list")
        << QVariant(QVariantList{1, QStringLiteral("a"), QVariant()})
        << QVariant(QVariantList{qlonglong(1), QStringLiteral("a"), QVariant::fromValue(nullptr)});
    QTest::newRow("inside a map")
        << QVariant(QVariantMap{{QStringLiteral("a"), 1}, {QStringLiteral("b"), true}})
        << QVariant(QVariantMap{{QStringLiteral("a"), qlonglong(1)}, {QStringLiteral("b"), true}});
}

void tst_CrossedFields::knownValues()
{
    QFETCH(QVariant, value);
    QFETCH(QVariant, crossed);
    const QVariantMap data{{QStringLiteral("v"), value}};
    const std::optional<QVariantMap> fields = CrossedFields::of(data);
    QVERIFY(fields);
    const QVariant found = fields->value(QStringLiteral("v"));
    QCOMPARE(found.userType(), crossed.userType());
    QCOMPARE(found.isNull(), crossed.isNull());
    QCOMPARE(found, crossed);

    QString error;
    const std::optional<QByteArray> text = WireText::encode(data, &error);
    QVERIFY2(text, qPrintable(error));
    QCOMPARE(*fields, *WireText::decode(*text, &error));
    QCOMPARE(*WireText::encode(*fields, &error), *text);
}

void tst_CrossedFields::onlyTheTextCanTell_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("floating point") << QVariant(1500.5);
    QTest::newRow("infinity") << QVariant(std::numeric_limits<double>::infinity());
    QTest::newRow("unsigned 64-bit") << QVariant(quint64(1));
    QTest::newRow("bytes") << QVariant(QByteArray("a"));
    QTest::newRow("time") << QVariant(QDateTime(QDate(2026, 11, 21), QTime(10, 0), Qt::UTC));
    QTest::newRow("list of texts") << QVariant(QStringList{QStringLiteral("a")});
    QTest::newRow("hash") << QVariant(QVariantHash{{QStringLiteral("a"), true}});
    QTest::newRow("object") << QVariant::fromValue<QObject *>(this);
    QTest::newRow("half a character") << QVariant(QString(QChar(0xd83d)));
    QTest::newRow("half a character in a name")
        << QVariant(QVariantMap{{QString(QChar(0xd83d)), true}});
    QTest::newRow("inside a list") << QVariant(QVariantList{QStringLiteral("a"), 0.5});
    QVariant deep = true;
    for (int i = 0; i < 2000; ++i)
        deep = QVariantList{deep};
    QTest::newRow("deeper than the reader goes") << deep;
}

void tst_CrossedFields::onlyTheTextCanTell()
{
    QFETCH(QVariant, value);
    QVERIFY(!CrossedFields::of(QVariantMap{{QStringLiteral("v"), value}}));
}

void tst_CrossedFields::onlyAMapCrosses()
{
    QVERIFY(!CrossedFields::of(QVariant()));
    QVERIFY(!CrossedFields::of(QStringLiteral("text")));
    QVERIFY(!CrossedFields::of(QVariantList{true}));
    QCOMPARE(CrossedFields::of(QVariantMap()), std::make_optional(QVariantMap()));
}

void tst_CrossedFields::oneNameTwice()
{
    QMultiMap<QString, QVariant> twice;
    twice.insert(QStringLiteral("a"), true);
    twice.insert(QStringLiteral("a"), false);
    QVERIFY(!CrossedFields::of(QVariantMap(twice)));
}

void tst_CrossedFields::unchangedFieldsAreShared()
{
    const QVariantMap data{{QStringLiteral("uid"), QStringLiteral("-42")}};
    const std::optional<QVariantMap> fields = CrossedFields::of(data);
    QVERIFY(fields);
    QVERIFY(fields->isSharedWith(data));
}

void tst_CrossedFields::theOriginalStaysAsItWas()
{
    const QVariantMap inner{{QStringLiteral("n"), 1}};
    const QVariantMap data{{QStringLiteral("list"), QVariantList{inner}}};
    QVERIFY(CrossedFields::of(data));
    const QVariant number =
        data.value(QStringLiteral("list")).toList().constFirst().toMap().value(QStringLiteral("n"));
    QCOMPARE(number.userType(), int(QMetaType::Int));
}

QTEST_GUILESS_MAIN(tst_CrossedFields)
#include "tst_crossedfields.moc"
