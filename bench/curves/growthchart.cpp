#include "growthchart.h"

#include <QChart>
#include <QChartView>
#include <QLineSeries>
#include <QLogValueAxis>
#include <QPen>

#include <algorithm>
#include <cmath>

using namespace QtCharts;

namespace {

constexpr QSize pictureSize(640, 400);
constexpr int lineWidth = 2;

QLineSeries *series(const QString &name, const QVector<QPointF> &points, const QColor &color,
                    Qt::PenStyle style)
{
    auto *line = new QLineSeries;
    line->setName(name);
    line->setPointsVisible(true);
    line->append(QList<QPointF>(points.cbegin(), points.cend()));
    line->setPen(QPen(color, lineWidth, style));
    return line;
}

QLogValueAxis *axis(const QString &title, double least, double most)
{
    auto *scale = new QLogValueAxis;
    scale->setBase(10);
    scale->setTitleText(title);
    scale->setLabelFormat(QStringLiteral("%g"));
    scale->setRange(std::pow(10, std::floor(std::log10(least))),
                    std::pow(10, std::ceil(std::log10(most))));
    return scale;
}

} // namespace

QImage GrowthChart::draw() const
{
    auto *chart = new QChart;
    chart->setTitle(title);
    QLineSeries *above = series(QStringLiteral("измерено"), measured, Qt::darkBlue, Qt::SolidLine);
    QLineSeries *below = series(floorText, floor, Qt::gray, Qt::DashLine);
    chart->addSeries(below);
    chart->addSeries(above);

    const auto byTime = [](const QPointF &a, const QPointF &b) { return a.y() < b.y(); };
    const QVector<QPointF> all = measured + floor;
    const auto times = std::minmax_element(all.cbegin(), all.cend(), byTime);
    QLogValueAxis *sizes = axis(sizeText, measured.first().x(), measured.last().x());
    QLogValueAxis *micros =
        axis(QStringLiteral("микросекунд"), times.first->y(), times.second->y());
    chart->addAxis(sizes, Qt::AlignBottom);
    chart->addAxis(micros, Qt::AlignLeft);
    for (QLineSeries *line : {below, above}) {
        line->attachAxis(sizes);
        line->attachAxis(micros);
    }
    chart->legend()->setAlignment(Qt::AlignBottom);

    QChartView view(chart);
    view.resize(pictureSize);
    view.setRenderHint(QPainter::Antialiasing);
    return view.grab().toImage();
}
