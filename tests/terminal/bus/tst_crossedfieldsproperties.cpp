#include <generators.h>
#include <property.h>

#include <bus/crossedfields.h>
#include <bus/inprocessbus.h>
#include <bus/wiretext.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QVariantHash>

#include <algorithm>
#include <string>

namespace {

constexpr int DEEPEST = 3;

enum class Of {
    Anything, ///< whatever a program can hand to a bus
    Messages, ///< what requests and pay packs are made of
};

rc::Gen<QString> readableText()
{
    return rc::gen::suchThat(rc::gen::arbitrary<QString>(),
                             [](const QString &text) { return text.isValidUtf16(); });
}

rc::Gen<qint64> integer()
{
    const qint64 exact = Q_INT64_C(1) << 53;
    return rc::gen::oneOf(rc::gen::arbitrary<qint64>(),
                          rc::gen::inRange<qint64>(exact - 2, exact + 3),
                          rc::gen::inRange<qint64>(-exact - 2, -exact + 3));
}

QVariant value(Of of, int depth);

QVariantMap map(Of of, int depth)
{
    QVariantMap result;
    const int count = *rc::gen::inRange(0, 5);
    for (int i = 0; i < count; ++i)
        result.insert(of == Of::Messages ? *readableText() : *rc::gen::arbitrary<QString>(),
                      value(of, depth));
    return result;
}

QVariantList list(Of of, int depth)
{
    QVariantList result;
    const int count = *rc::gen::inRange(0, 5);
    for (int i = 0; i < count; ++i)
        result.append(value(of, depth));
    return result;
}

QVariant value(Of of, int depth)
{
    switch (*rc::gen::inRange(depth < DEEPEST ? 0 : 2, of == Of::Anything ? 18 : 9)) {
    case 0:
        return map(of, depth + 1);
    case 1:
        return list(of, depth + 1);
    case 2:
        return *readableText();
    case 3:
        return *integer();
    case 4:
        return *rc::gen::arbitrary<int>();
    case 5:
        return *rc::gen::arbitrary<bool>();
    case 6:
        return QVariant();
    case 7:
        return QString();
    case 8:
        return *rc::gen::arbitrary<uint>();
    case 9:
        return *rc::gen::arbitrary<QString>();
    case 10:
        return *rc::gen::arbitrary<quint64>();
    case 11:
        return *rc::gen::arbitrary<double>();
    case 12:
        return *rc::gen::element(qInf(), qQNaN(), -0.0, 2.0, 1e20);
    case 13:
        return QByteArray::fromStdString(*rc::gen::arbitrary<std::string>());
    case 14:
        return QDateTime::fromMSecsSinceEpoch(*rc::gen::inRange<qint64>(0, 4102444800000));
    case 15:
        return QStringList{*rc::gen::arbitrary<QString>()};
    case 16:
        return QVariantHash{{*rc::gen::arbitrary<QString>(), *rc::gen::arbitrary<int>()}};
    default:
        return QVariant(QVariant::Type(
            *rc::gen::element(QMetaType::Bool, QMetaType::Int, QMetaType::LongLong)));
    }
}

rc::Gen<QVariantMap> anyData(Of of)
{
    return rc::gen::exec([of] { return map(of, 0); });
}

/// Types and nulls as well, which QVariant's own comparison overlooks.
bool isSame(const QVariant &first, const QVariant &second)
{
    if (first.userType() != second.userType() || first.isNull() != second.isNull())
        return false;
    if (first.userType() == QMetaType::QVariantList) {
        const QVariantList left = first.toList();
        const QVariantList right = second.toList();
        return std::equal(left.cbegin(), left.cend(), right.cbegin(), right.cend(), isSame);
    }
    if (first.userType() == QMetaType::QVariantMap) {
        const QVariantMap left = first.toMap();
        const QVariantMap right = second.toMap();
        return left.keys() == right.keys()
            && std::equal(left.cbegin(), left.cend(), right.cbegin(), right.cend(), isSame);
    }
    return first.userType() == QMetaType::Nullptr || first == second;
}

} // namespace

namespace rc {

template<>
struct Arbitrary<QVariantMap>
{
    static Gen<QVariantMap> arbitrary() { return anyData(Of::Anything); }
};

} // namespace rc

void showValue(const QVariantMap &data, std::ostream &out)
{
    QString text;
    QDebug(&text) << data;
    showValue(text, out);
}

class tst_CrossedFieldsProperties : public QObject
{
    Q_OBJECT

private slots:
    void fieldsAreWhatTheTextGives();
    void messagesNeedNoText();
    void handlersGetWhatTheTextGives();
};

void tst_CrossedFieldsProperties::fieldsAreWhatTheTextGives()
{
    CHECK_PROPERTY("fields without the text", [](const QVariantMap &data) {
        const std::optional<QVariantMap> fields = CrossedFields::of(data);
        if (!fields)
            return;
        QString error;
        const std::optional<QByteArray> text = WireText::encode(data, &error);
        RC_ASSERT(text.has_value());
        const std::optional<QVariantMap> arrived = WireText::decode(*text, &error);
        RC_ASSERT(arrived.has_value());
        RC_ASSERT(isSame(*fields, *arrived));
        RC_ASSERT(WireText::encode(*fields, &error) == text);
    });
}

void tst_CrossedFieldsProperties::messagesNeedNoText()
{
    CHECK_PROPERTY("what messages are made of is known at once", [] {
        const QVariantMap data = *anyData(Of::Messages);
        RC_ASSERT(CrossedFields::of(data).has_value());
    });
}

void tst_CrossedFieldsProperties::handlersGetWhatTheTextGives()
{
    const QString address = QStringLiteral("/far");
    InProcessBus bus;
    std::optional<QVariantMap> arrived;
    QString refusal;
    bus.serve(address, [&arrived](const QVariantMap &message) {
        arrived = message;
        return InProcessBus::Outcome();
    });
    connect(
        &bus, &MessageBus::refused, this,
        [&refusal](const QString &, const QVariant &, const QString &reason) { refusal = reason; });
    CHECK_PROPERTY("a handler gets what a wire would bring", [&](const QVariantMap &data) {
        arrived.reset();
        refusal.clear();
        bus.sendMessage(address, data);
        QCoreApplication::sendPostedEvents();

        QString error;
        const std::optional<QByteArray> text = WireText::encode(data, &error);
        const std::optional<QVariantMap> expected =
            text ? WireText::decode(*text, &error) : std::nullopt;
        RC_ASSERT(arrived.has_value() == expected.has_value());
        RC_ASSERT(refusal == error);
        if (expected)
            RC_ASSERT(isSame(*arrived, *expected));
    });
}

QTEST_GUILESS_MAIN(tst_CrossedFieldsProperties)
#include "tst_crossedfieldsproperties.moc"
