#include "billingsamples.h"
#include "messagelog.h"
#include "srobject.h"

#include <QTest>

using namespace BillingSamples;

class TestSrObject : public QObject
{
    Q_OBJECT

private slots:
    void emptyListEmptiesTheRecord();
    void laterOfTwoDescriptorsWins();
    void elementsThatAreNoDescriptors();
    void elementIsKeptAsItCame();
    void readsField_data();
    void readsField();
    void readsEveryOfSeveralFields_data();
    void readsEveryOfSeveralFields();
    void readsADescriptorThatIsAHash();
    void valueIsReadWhereItIs_data();
    void valueIsReadWhereItIs();
    void valueThatIsNotThereIsReadAsInvalid_data();
    void valueThatIsNotThereIsReadAsInvalid();
    void refusedChangeChangesNothing_data();
    void refusedChangeChangesNothing();
    void changesEditableField();
    void changeAddsMissingValue();
    void payParamsInAscendingOrder();
    void payParamsAreLogged();
    void changedCopyLeavesTheOriginal();
    void movedRecordKeepsItsFields();
    void assignmentToItself();
};

static const QString nameA = QStringLiteral("a");
static const QString nameB = QStringLiteral("b");

static QVariantMap pair(const QString &name, const QVariant &value)
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("value"), value}};
}

/// A record as its own kinds see it.
class OpenRecord : public SrObject
{
public:
    using SrObject::valueRead;
};

static SrObject record(const QVariantList &list)
{
    SrObject object;
    object.parseCheckList(list);
    return object;
}

void TestSrObject::emptyListEmptiesTheRecord()
{
    SrObject object = record({field(nameA, 1)});
    object.parseCheckList({});
    QVERIFY(object.getParams().isEmpty());
    QCOMPARE(object, SrObject());
}

void TestSrObject::laterOfTwoDescriptorsWins()
{
    const SrObject object = record({field(nameA, 1), field(nameB, 2), field(nameA, 3)});
    QCOMPARE(object.getParams().size(), 2);
    QCOMPARE(object.getValue(nameA), QVariant(3));
}

void TestSrObject::elementsThatAreNoDescriptors()
{
    const SrObject object =
        record({QStringLiteral("text"), 5, QVariant(), QVariantMap{{nameA, 1}}});
    QCOMPARE(object.getParams().keys(), QStringList{QString()});
    QCOMPARE(object.getField(QString()), (QVariantMap{{nameA, 1}}));
}

void TestSrObject::elementIsKeptAsItCame()
{
    QVariantMap descriptor = field(nameA, QStringLiteral("x"));
    descriptor.insert(QStringLiteral("regexp"), QStringLiteral("^\\d+$"));
    descriptor.insert(QStringLiteral("unheard of"), QVariantList{1, 2});
    const SrObject object = record({descriptor});
    QCOMPARE(object.getParams().value(nameA), QVariant(descriptor));
    QCOMPARE(object.getField(nameA), descriptor);
}

void TestSrObject::readsField_data()
{
    QTest::addColumn<QVariantMap>("descriptor");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("editable");
    const QString isEditable = QStringLiteral("isEditable");

    QTest::newRow("all there") << field(nameA, QStringLiteral("v"), Edit::Allowed,
                                        QStringLiteral("T"))
                               << QVariant(QStringLiteral("v")) << QStringLiteral("T") << true;
    QTest::newRow("read-only") << field(nameA, 5, Edit::Refused) << QVariant(5) << QString()
                               << false;
    QTest::newRow("name only") << QVariantMap{{QStringLiteral("name"), nameA}} << QVariant()
                               << QString() << false;
    QTest::newRow("isEditable as text")
        << QVariantMap{{QStringLiteral("name"), nameA}, {isEditable, QStringLiteral("true")}}
        << QVariant() << QString() << true;
    QTest::newRow("keys behind the value") << QVariantMap{{QStringLiteral("name"), nameA},
                                                          {QStringLiteral("value"), 7},
                                                          {QStringLiteral("visible"), true}}
                                           << QVariant(7) << QString() << false;
    QTest::newRow("unknown field") << field(nameB, 5) << QVariant() << QString() << false;
}

void TestSrObject::readsField()
{
    QFETCH(QVariantMap, descriptor);
    SrObject object = record({descriptor});
    QTEST(object.getValue(nameA), "value");
    QTEST(object.getTitle(nameA), "title");
    QTEST(object.isEditable(nameA), "editable");
}

void TestSrObject::readsEveryOfSeveralFields_data()
{
    QTest::addColumn<QStringList>("names");
    QStringList many;
    for (int i = 100; i < 200; ++i)
        many.append(QString::number(i));
    QTest::newRow("few, alike but for their ends") << QStringList(many.mid(0, 10));
    QTest::newRow("many") << many;
    QTest::newRow("one begins as the other")
        << QStringList{QStringLiteral("n"), QStringLiteral("nu"), QStringLiteral("num")};
}

void TestSrObject::readsEveryOfSeveralFields()
{
    QFETCH(const QStringList, names);
    QVariantList list;
    for (const QString &name : names)
        list.append(field(name, name + QLatin1Char('v'), Edit::Allowed, name + QLatin1Char('t')));
    SrObject object = record(list);
    for (const QString &name : names) {
        QCOMPARE(object.getValue(name), QVariant(name + QLatin1Char('v')));
        QCOMPARE(object.getTitle(name), name + QLatin1Char('t'));
        QVERIFY(object.isEditable(name));
    }
    QVERIFY(!object.getValue(names.constLast() + QLatin1Char('x')).isValid());
    QVERIFY(!object.getValue(names.constFirst().chopped(1)).isValid());
}

void TestSrObject::readsADescriptorThatIsAHash()
{
    const QVariantHash hash{{QStringLiteral("name"), nameA},
                            {QStringLiteral("value"), 7},
                            {QStringLiteral("title"), QStringLiteral("T")},
                            {QStringLiteral("isEditable"), true}};
    SrObject object = record({hash});
    QCOMPARE(object.getValue(nameA), QVariant(7));
    QCOMPARE(object.getTitle(nameA), QStringLiteral("T"));
    object.setValue(nameA, 8);
    QCOMPARE(object.getValue(nameA), QVariant(8));
}

void TestSrObject::valueIsReadWhereItIs_data()
{
    QTest::addColumn<QVariantMap>("descriptor");
    QTest::newRow("as billing sends it") << field(nameA, QStringLiteral("v"));
    QTest::newRow("nothing but the value") << pair(nameA, QStringLiteral("v"));
    QTest::newRow("keys behind the value")
        << QVariantMap{{QStringLiteral("name"), nameA},
                       {QStringLiteral("value"), QStringLiteral("v")},
                       {QStringLiteral("visible"), true}};
}

void TestSrObject::valueIsReadWhereItIs()
{
    QFETCH(QVariantMap, descriptor);
    OpenRecord object;
    object.parseCheckList({field(nameB, 1), descriptor});
    const auto address = [](const QVariant &value) { return &value; };
    const QVariant *read = object.valueRead(nameA, address);
    // Maps are shared: the value inside the record is the value inside this one.
    const QVariantMap &given = descriptor;
    QCOMPARE(read, &*given.constFind(QStringLiteral("value")));
}

void TestSrObject::valueThatIsNotThereIsReadAsInvalid_data()
{
    QTest::addColumn<QVariantList>("list");
    QTest::newRow("no fields") << QVariantList();
    QTest::newRow("other field") << QVariantList{field(nameB, 1)};
    QTest::newRow("empty descriptors") << QVariantList{QVariantMap(), QVariantMap()};
    QTest::newRow("without a value") << QVariantList{QVariantMap{{QStringLiteral("name"), nameA}}};
    QTest::newRow("keys around the value's place") << QVariantList{
        QVariantMap{{QStringLiteral("name"), nameA}, {QStringLiteral("visible"), true}}};
    QTest::newRow("no descriptor") << QVariantList{QStringLiteral("text")};
    QTest::newRow("hash without a value")
        << QVariantList{QVariantHash{{QStringLiteral("name"), nameA}}};
}

void TestSrObject::valueThatIsNotThereIsReadAsInvalid()
{
    QFETCH(QVariantList, list);
    OpenRecord object;
    object.parseCheckList(list);
    const auto isValid = [](const QVariant &value) { return value.isValid(); };
    QVERIFY(!object.valueRead(nameA, isValid));
    QVERIFY(!object.valueRead(QString(), isValid));
}

void TestSrObject::refusedChangeChangesNothing_data()
{
    QTest::addColumn<QVariantList>("list");
    QTest::newRow("unknown field") << QVariantList{field(nameB, 1)};
    QTest::newRow("empty record") << QVariantList();
    QTest::newRow("isEditable false") << QVariantList{field(nameA, 1, Edit::Refused)};
    QTest::newRow("isEditable missing") << QVariantList{pair(nameA, 1)};
}

void TestSrObject::refusedChangeChangesNothing()
{
    QFETCH(QVariantList, list);
    SrObject object = record(list);
    const SrObject before = object;
    object.setValue(nameA, 2);
    QVERIFY(object == before);
    QVERIFY(object.getParams().isSharedWith(before.getParams()));
}

void TestSrObject::changesEditableField()
{
    SrObject object =
        record({field(nameA, 1, Edit::Allowed, QStringLiteral("T")), field(nameB, 2)});
    object.setValue(nameA, QStringLiteral("new"));
    QCOMPARE(object.getField(nameA),
             field(nameA, QStringLiteral("new"), Edit::Allowed, QStringLiteral("T")));
    QCOMPARE(object.getValue(nameB), QVariant(2));
}

void TestSrObject::changeAddsMissingValue()
{
    SrObject object = record(
        {QVariantMap{{QStringLiteral("name"), nameA}, {QStringLiteral("isEditable"), true}}});
    QVERIFY(!object.getValue(nameA).isValid());
    object.setValue(nameA, QStringLiteral("new"));
    QCOMPARE(object.getValue(nameA), QVariant(QStringLiteral("new")));
}

void TestSrObject::payParamsInAscendingOrder()
{
    QVariantMap noValue = field(nameA, 1);
    noValue.remove(QStringLiteral("value"));
    const SrObject object = record({field(nameB, 2.5, Edit::Refused), noValue});
    QCOMPARE(object.toPayParamsList(), (QVariantList{pair(nameA, QVariant()), pair(nameB, 2.5)}));
    QVERIFY(!object.toPayParamsList().first().toMap().value(QStringLiteral("value")).isValid());
}

void TestSrObject::payParamsAreLogged()
{
    const SrObject object = record({field(nameA, QStringLiteral("тест"))});
    MessageLog log;
    object.toPayParamsList();
    QCOMPARE(log.messages().size(), 1);
    const MessageLog::Message line = log.messages().constFirst();
    QCOMPARE(line.type, QtWarningMsg);
    QCOMPARE(line.category, QStringLiteral("default"));
    QVERIFY(line.function.contains(QLatin1String("toPayParamsList")));
    QVERIFY(line.text.contains(QStringLiteral("тест")));
}

void TestSrObject::changedCopyLeavesTheOriginal()
{
    const SrObject original = record({field(nameA, 1)});
    SrObject copy = original;
    copy.setValue(nameA, 2);
    QCOMPARE(original.getValue(nameA), QVariant(1));
    QCOMPARE(copy.getValue(nameA), QVariant(2));
    QVERIFY(copy != original);
}

void TestSrObject::movedRecordKeepsItsFields()
{
    SrObject source = record({field(nameA, 1)});
    const SrObject expected = source;
    SrObject moved = std::move(source);
    QVERIFY(moved == expected);
    SrObject assigned;
    assigned = std::move(moved);
    QVERIFY(assigned == expected);
}

void TestSrObject::assignmentToItself()
{
    SrObject object = record({field(nameA, 1)});
    const SrObject &same = object;
    object = same;
    QCOMPARE(object.getValue(nameA), QVariant(1));
    object.setParams(object.getParams());
    QCOMPARE(object.getValue(nameA), QVariant(1));
}

QTEST_GUILESS_MAIN(TestSrObject)
#include "tst_srobject.moc"
