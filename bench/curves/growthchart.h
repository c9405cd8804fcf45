#pragma once

#include <QImage>
#include <QPointF>
#include <QString>
#include <QVector>

/// A picture of how time grows with the size of the input, both on logarithmic scales: what grows
/// in proportion is a line at 45 degrees, what does not grow is level.
struct GrowthChart
{
    QString title;
    QString sizeText;
    /// Points of size and microseconds.
    QVector<QPointF> measured;
    QVector<QPointF> floor;
    QString floorText;

    QImage draw() const;
};
