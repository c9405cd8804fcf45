#include <storage/jsontext.h>

#include <generators.h>
#include <property.h>

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

namespace {

QString byQt(const QVariantMap &map)
{
    return QString::fromUtf8(
        QJsonDocument(QJsonObject::fromVariantMap(map)).toJson(QJsonDocument::Compact));
}

/// What packs and fiscal documents are made of, and some of what they are not.
QVariant made(int depth)
{
    const int count = depth < 3 ? *rc::gen::inRange(0, 4) : 0;
    switch (*rc::gen::inRange(0, 8)) {
    case 0: {
        QVariantMap map;
        for (int i = 0; i < count; ++i)
            map.insert(*rc::gen::arbitrary<QString>(), made(depth + 1));
        return map;
    }
    case 1: {
        QVariantList list;
        for (int i = 0; i < count; ++i)
            list.append(made(depth + 1));
        return list;
    }
    case 2:
        return *rc::gen::arbitrary<bool>();
    case 3:
        return *rc::gen::arbitrary<int>();
    case 4:
        return *rc::gen::arbitrary<qint64>();
    case 5:
        return *rc::gen::weightedElement<QVariant>({{9, QString()}, {1, QVariant(0.5)}});
    default:
        return *rc::gen::arbitrary<QString>();
    }
}

} // namespace

class tst_JsonText : public QObject
{
    Q_OBJECT

private slots:
    void asQtWritesIt_data();
    void asQtWritesIt();
    void oneNameTwice();
    void anyMap();
};

void tst_JsonText::asQtWritesIt_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QVariant &value, const char *text) {
        QTest::newRow(name) << value << QString::fromUtf8(text);
    };
    row("text", QStringLiteral("Ё № «»"), "\"Ё № «»\"");
    row("empty text", QString(), "\"\"");
    row("quotes", QStringLiteral("\"\\/"), R"("\"\\/")");
    row("controls", QStringLiteral("\b\f\n\r\t\x01\x1f\x7f"),
        "\"\\b\\f\\n\\r\\t\\u0001\\u001f\x7f\"");
    row("a letter outside the basic plane", QString::fromUtf8("\xf0\x9f\x98\x80"),
        "\"\xf0\x9f\x98\x80\"");
    row("half a letter", QString(QChar(0xd83d)), R"("\ud83d")");
    row("yes", true, "true");
    row("int", -643, "-643");
    row("unsigned", std::numeric_limits<uint>::max(), "4294967295");
    row("2^53", Q_INT64_C(9007199254740992), "9007199254740992");
    row("-2^53", Q_INT64_C(-9007199254740992), "-9007199254740992");
    row("beyond 2^53", Q_INT64_C(9007199254740993), "9007199254740992");
    row("floating point", 0.01, "0.01");
    row("nothing", QVariant(), "null");
    row("bytes", QByteArray("a"), "\"a\"");
    row("texts", QStringList{QStringLiteral("a"), QStringLiteral("b")}, R"(["a","b"])");
    row("list", QVariantList{1, QVariantList{}, QVariantMap{}}, "[1,[],{}]");
    row("map", QVariantMap{{QStringLiteral("b"), 2}, {QStringLiteral("a"), 1}}, R"({"a":1,"b":2})");
}

void tst_JsonText::asQtWritesIt()
{
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    const QVariantMap map{{QStringLiteral("v"), value}};
    QCOMPARE(JsonText::compact(map), QStringLiteral("{\"v\":%1}").arg(text));
    QCOMPARE(JsonText::compact(map), byQt(map));
}

void tst_JsonText::oneNameTwice()
{
    QMultiMap<QString, QVariant> twice;
    twice.insert(QStringLiteral("a"), 1);
    twice.insert(QStringLiteral("a"), 2);
    QCOMPARE(JsonText::compact(QVariantMap(twice)), byQt(QVariantMap(twice)));
}

void tst_JsonText::anyMap()
{
    CHECK_PROPERTY("character by character what Qt writes", [] {
        QVariantMap map;
        const int count = *rc::gen::inRange(0, 5);
        for (int i = 0; i < count; ++i)
            map.insert(*rc::gen::arbitrary<QString>(), made(0));
        RC_ASSERT(JsonText::compact(map) == byQt(map));
    });
}

QTEST_GUILESS_MAIN(tst_JsonText)
#include "tst_jsontext.moc"
