#include "generators.h"

#include <QVariantMap>
#include <QVector>

#include <limits>
#include <ostream>

namespace {

QVariantMap field(const QString &name, const QString &value, bool editable)
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("value"), value},
            {QStringLiteral("title"), QStringLiteral("Поле ") + name},
            {QStringLiteral("isEditable"), editable}};
}

rc::Gen<Generators::Service> service(const rc::Gen<qint64> &distributed)
{
    return rc::gen::build<Generators::Service>(
        rc::gen::set(&Generators::Service::id,
                     rc::gen::weightedElement<qint64>({{7, 17}, {1, 3924990}})),
        rc::gen::set(&Generators::Service::charge, Generators::amount()),
        rc::gen::set(&Generators::Service::topay, Generators::amount()),
        rc::gen::set(&Generators::Service::distributed, distributed),
        rc::gen::set(&Generators::Service::editable,
                     rc::gen::weightedElement<bool>({{7, true}, {1, false}})));
}

rc::Gen<std::vector<Generators::Service>> few(const rc::Gen<Generators::Service> &one)
{
    return rc::gen::mapcat(rc::gen::inRange(0, 6), [one](int count) {
        return rc::gen::container<std::vector<Generators::Service>>(static_cast<std::size_t>(count),
                                                                    one);
    });
}

} // namespace

void showValue(const QString &text, std::ostream &out)
{
    out << '"';
    for (const QChar c : text) {
        if (c.unicode() >= 0x20 && c.unicode() < 0x7f)
            out << c.toLatin1();
        else
            out << "\\u" << QByteArray::number(c.unicode(), 16).rightJustified(4, '0').constData();
    }
    out << '"';
}

rc::Gen<QString> rc::Arbitrary<QString>::arbitrary()
{
    const auto character = gen::weightedOneOf<char16_t>(
        {{6, gen::elementOf(std::u16string(u"0123456789.,-+@|=/ ()<>&%\"\t\nST"))},
         {2, gen::inRange<char16_t>(u'а', u'я')},
         {1, gen::inRange<char16_t>(0, 0xffff)}});
    return gen::map(gen::container<std::u16string>(character),
                    [](const std::u16string &text) { return QString::fromStdU16String(text); });
}

rc::Gen<qint64> Generators::anyRaw()
{
    constexpr qint64 lowest = std::numeric_limits<qint64>::min();
    constexpr qint64 highest = std::numeric_limits<qint64>::max();
    return rc::gen::weightedOneOf<qint64>(
        {{4, rc::gen::arbitrary<qint64>()},
         {2, amount()},
         {1, rc::gen::inRange<qint64>(lowest, lowest + 1000)},
         {1, rc::gen::inRange<qint64>(highest - 1000, highest)},
         {1, rc::gen::elementOf(std::vector<qint64>{lowest, highest, 0})},
         {2, rc::gen::inRange<qint64>(-9007199254740993, 9007199254740993)}});
}

rc::Gen<qint64> Generators::amount()
{
    return rc::gen::weightedOneOf<qint64>({{2, rc::gen::element<qint64>(0, 1, 2, -1, -2)},
                                           {3, rc::gen::inRange<qint64>(-100000, 100000)},
                                           {1, rc::gen::inRange<qint64>(-100000000, 100000000)}});
}

rc::Gen<qint64> Generators::amountNotBelowZero()
{
    return rc::gen::map(amount(), [](qint64 kopecks) { return qAbs(kopecks); });
}

rc::Gen<int> Generators::multiplier()
{
    return rc::gen::element(1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000,
                            1000000000);
}

rc::Gen<std::vector<Generators::Service>> Generators::services()
{
    return few(service(amount()));
}

rc::Gen<std::vector<Generators::Service>> Generators::payableServices()
{
    return few(service(amountNotBelowZero()));
}

QVariantList Generators::Service::descriptors() const
{
    return {field(QStringLiteral("id"), QString::number(id), false),
            field(QStringLiteral("name"), QStringLiteral("Услуга"), false),
            field(QStringLiteral("charge"), money(charge), false),
            field(QStringLiteral("topay"), money(topay), false),
            field(QStringLiteral("distributed"), money(distributed), editable)};
}

void Generators::showValue(const Service &service, std::ostream &out)
{
    out << "{id " << service.id << ", charge " << service.charge << ", due " << service.topay
        << ", distributed " << service.distributed << (service.editable ? "}" : ", read-only}");
}

QVariantMap Generators::listed(const QString &name, const QVector<QVariantList> &records)
{
    QVariantList wrapped;
    for (const QVariantList &record : records)
        wrapped.append(QVariantMap{{QStringLiteral("paramList"), QVariant(record)}});
    return {{QStringLiteral("name"), name}, {QStringLiteral("paramList"), QVariant(wrapped)}};
}

QVariantMap Generators::listed(const QString &name, const std::vector<Service> &services)
{
    QVector<QVariantList> records;
    for (const Service &service : services)
        records.append(service.descriptors());
    return listed(name, records);
}

QString Generators::money(qint64 kopecks)
{
    const QString size = QString::number(qAbs(kopecks)).rightJustified(3, QLatin1Char('0'));
    return (kopecks < 0 ? QStringLiteral("-") : QString()) + size.left(size.size() - 2)
        + QLatin1Char('.') + size.right(2);
}
