#include "receiptpicture.h"

#include <bills/qrpicture.h>

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>

#include <cmath>

namespace {

constexpr int printable = 576; // dots of the print head
constexpr int border = 32;     // unprinted edge of the paper
constexpr int surroundings = 16;
constexpr int qrModule = 6;

QFont tapeFont()
{
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    int size = 26;
    do {
        font.setPixelSize(--size);
    } while (size > 8
             && QFontMetricsF(font).horizontalAdvance(QLatin1Char('0')) * ReceiptPicture::columns
                 > printable);
    return font;
}

QStringList wrapped(const QString &text)
{
    QStringList result;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        int from = 0;
        do {
            result.append(line.mid(from, ReceiptPicture::columns));
            from += ReceiptPicture::columns;
        } while (from < line.size());
    }
    while (!result.isEmpty() && result.constLast().trimmed().isEmpty())
        result.removeLast();
    return result;
}

/// Paper whose lower edge the cutter has torn.
QPainterPath paper(const QRectF &area)
{
    constexpr qreal tooth = 8;
    QPainterPath path(area.topLeft());
    path.lineTo(area.topRight());
    path.lineTo(area.bottomRight());
    bool up = true;
    for (qreal x = area.right() - tooth; x > area.left(); x -= tooth, up = !up)
        path.lineTo(x, area.bottom() - (up ? tooth : 0));
    path.lineTo(area.bottomLeft());
    path.closeSubpath();
    return path;
}

} // namespace

QImage ReceiptPicture::draw(const QString &text, const QString &qrText)
{
    const QFont font = tapeFont();
    const QFontMetricsF metrics(font);
    const int lineHeight = int(std::ceil(metrics.height()));
    const QStringList lines = wrapped(text);
    const QImage qr = QrPicture::draw(qrText.toUtf8(), qrModule);

    const int paperWidth = printable + 2 * border;
    const int paperHeight =
        2 * border + lines.size() * lineHeight + (qr.isNull() ? 0 : qr.height() + lineHeight / 2);
    QImage image(paperWidth + 2 * surroundings, paperHeight + 2 * surroundings,
                 QImage::Format_RGB32);
    image.fill(QColor(0xd6, 0xda, 0xde));

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area(surroundings, surroundings, paperWidth, paperHeight);
    painter.fillPath(paper(area.translated(3, 4)), QColor(0xb4, 0xb9, 0xbe));
    painter.fillPath(paper(area), QColor(0xfd, 0xfd, 0xfb));

    painter.setFont(font);
    painter.setPen(QColor(0x20, 0x20, 0x22));
    const qreal cell = metrics.horizontalAdvance(QLatin1Char('0'));
    const qreal left = surroundings + border + (printable - cell * columns) / 2;
    qreal baseline = surroundings + border + metrics.ascent();
    for (const QString &line : lines) {
        painter.drawText(QPointF(left, baseline), line);
        baseline += lineHeight;
    }
    if (!qr.isNull()) {
        const qreal top = surroundings + border + lines.size() * lineHeight + lineHeight / 2.0;
        painter.drawImage(
            QPointF(std::floor(surroundings + (paperWidth - qr.width()) / 2.0), std::floor(top)),
            qr);
    }
    return image;
}
