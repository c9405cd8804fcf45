#include "ratiotable.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

const char *const BenchRow::bytesCounter = "bytes";

namespace {

const QLatin1String jsonRows("rows");
const QLatin1String jsonRow("row");
const QLatin1String jsonSize("size");
const QLatin1String jsonFloor("floor");
const QLatin1String jsonMeasured("measured");

QString shown(double value, BenchRow::Unit unit)
{
    const bool bytes = unit == BenchRow::Unit::Bytes;
    const double step = bytes ? 1024 : 1000;
    const QStringList names = bytes
        ? QStringList{QStringLiteral("Б"), QStringLiteral("КиБ"), QStringLiteral("МиБ")}
        : QStringList{QStringLiteral("нс"), QStringLiteral("мкс"), QStringLiteral("мс"),
                      QStringLiteral("с")};
    int at = 0;
    while (value >= step && at + 1 < names.size()) {
        value /= step;
        ++at;
    }
    return QStringLiteral("%1 %2").arg(QString::number(value, 'f', value < 100 ? 1 : 0),
                                       names.at(at));
}

QString unitName(BenchRow::Unit unit)
{
    switch (unit) {
    case BenchRow::Unit::CpuTime:
        return QStringLiteral("cpu_ns");
    case BenchRow::Unit::RealTime:
    case BenchRow::Unit::OwnTime:
        return QStringLiteral("real_ns");
    case BenchRow::Unit::Bytes:
        return QStringLiteral("bytes");
    }
    return {};
}

} // namespace

RatioTable::RatioTable(const QVector<BenchRow> &rows) : m_rows(rows)
{
    for (const BenchRow &row : rows) {
        for (const int size : row.sizes) {
            for (const bool isFloor : {true, false})
                m_units.insert(QString::fromStdString(name(row.id, size, isFloor)), row.unit);
        }
    }
}

std::string RatioTable::name(const QString &id, int size, bool isFloor)
{
    return QStringLiteral("%1/%2/%3")
        .arg(id, QString::number(size),
             isFloor ? QStringLiteral("floor") : QStringLiteral("measured"))
        .toStdString();
}

bool RatioTable::ReportContext(const Context &)
{
    return true;
}

void RatioTable::ReportRuns(const std::vector<Run> &runs)
{
    for (const Run &run : runs) {
        // What the library appends about repetitions and iterations is no part of our names.
        const QString key = QString::fromStdString(run.run_name.function_name);
        if (run.error_occurred) {
            m_failures.append(
                QStringLiteral("%1: %2").arg(key, QString::fromStdString(run.error_message)));
            continue;
        }
        if (run.run_type != Run::RT_Iteration)
            continue;
        double value = 0;
        switch (m_units.value(key)) {
        case BenchRow::Unit::CpuTime:
            value = run.GetAdjustedCPUTime();
            break;
        case BenchRow::Unit::RealTime:
        case BenchRow::Unit::OwnTime:
            value = run.GetAdjustedRealTime();
            break;
        case BenchRow::Unit::Bytes: {
            const auto bytes = run.counters.find(BenchRow::bytesCounter);
            value = bytes == run.counters.end() ? 0 : bytes->second.value;
            break;
        }
        }
        add(key, value);
    }
}

void RatioTable::add(const QString &key, double value)
{
    const auto known = m_least.constFind(key);
    if (known == m_least.constEnd() || value < *known)
        m_least.insert(key, value);
}

void RatioTable::addJson(const QByteArray &json)
{
    const QJsonArray rows = QJsonDocument::fromJson(json).object().value(jsonRows).toArray();
    for (const QJsonValue &value : rows) {
        const QString id = value[jsonRow].toString();
        const int size = value[jsonSize].toInt();
        const auto key = [&id, size](bool isFloor) {
            return QString::fromStdString(name(id, size, isFloor));
        };
        add(key(true), value[jsonFloor].toDouble());
        add(key(false), value[jsonMeasured].toDouble());
    }
}

QVector<RatioTable::Line> RatioTable::lines() const
{
    QVector<Line> result;
    for (const BenchRow &row : m_rows) {
        for (const int size : row.sizes) {
            result.append({&row, size,
                           m_least.value(QString::fromStdString(name(row.id, size, true))),
                           m_least.value(QString::fromStdString(name(row.id, size, false)))});
        }
    }
    return result;
}

QString RatioTable::toText() const
{
    QString text;
    QTextStream out(&text);
    const QVector<Line> all = lines();
    const BenchRow *last = nullptr;
    for (const Line &line : all) {
        if (!line.isComplete())
            continue;
        if (line.row != last) {
            last = line.row;
            out << QStringLiteral("\n%1\n    основа: %2\n").arg(last->subject, last->floorText);
        }
        const QString size = last->sizeText.isEmpty()
            ? QString()
            : QStringLiteral("%L1 %2").arg(QString::number(line.size), last->sizeText);
        out << QStringLiteral("    %1 %2 -> %3   %4 x, не больше %5%6\n")
                   .arg(size.leftJustified(20), shown(line.bare, last->unit).rightJustified(11),
                        shown(line.measured, last->unit).leftJustified(11),
                        QString::number(line.ratio(), 'f', 2),
                        QString::number(last->atMost, 'g', 3),
                        line.ratio() <= last->atMost ? QString() : QStringLiteral("   ПРЕВЫШЕНО"));
    }
    return text;
}

QByteArray RatioTable::toJson() const
{
    QJsonArray rows;
    const QVector<Line> all = lines();
    for (const Line &line : all) {
        if (!line.isComplete())
            continue;
        rows.append(QJsonObject{{jsonRow, line.row->id},
                                {QStringLiteral("subject"), line.row->subject},
                                {QStringLiteral("floorText"), line.row->floorText},
                                {jsonSize, line.size},
                                {QStringLiteral("sizeText"), line.row->sizeText},
                                {QStringLiteral("unit"), unitName(line.row->unit)},
                                {jsonFloor, line.bare},
                                {jsonMeasured, line.measured},
                                {QStringLiteral("ratio"), line.ratio()},
                                {QStringLiteral("atMost"), line.row->atMost},
                                {QStringLiteral("holds"), line.ratio() <= line.row->atMost}});
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("taken"),
                                      QDateTime::currentDateTimeUtc().toString(Qt::ISODate)},
                                     {jsonRows, rows}})
        .toJson();
}

QStringList RatioTable::missing() const
{
    QStringList result = m_failures;
    const QVector<Line> all = lines();
    for (const Line &line : all) {
        if (!line.isComplete())
            result.append(QStringLiteral("%1, %2").arg(line.row->id, QString::number(line.size)));
    }
    return result;
}
