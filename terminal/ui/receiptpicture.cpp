#include "receiptpicture.h"

#include <bills/qrpicture.h>

#include <QBuffer>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>
#include <QStringList>

#include <cmath>

namespace {

constexpr int printable = 576; // dots of the print head
constexpr int border = 32;     // unprinted edge of the paper
constexpr int surroundings = 16;
constexpr int qrModule = 6;
constexpr qreal dotsPerMillimetre = 8;
constexpr int pdfFactor = 10; // units of the file for a dot
constexpr int pdfLines = 300; // of a page: well below the 5 m that a PDF page may be long
/// Beyond some 32,000 the painter loses count; a long receipt is painted a part at a time.
constexpr int bandHeight = 16384;

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
    for (int i = 1; i * tooth < area.width(); ++i)
        path.lineTo(area.right() - i * tooth, area.bottom() - (i % 2 == 1 ? tooth : 0));
    path.lineTo(area.bottomLeft());
    path.closeSubpath();
    return path;
}

/// What is printed, in dots from the upper left corner of the paper.
class Tape
{
public:
    Tape(const QString &text, const QString &qrText)
        : m_font(tapeFont()),
          m_metrics(m_font),
          m_lineHeight(int(std::ceil(m_metrics.height()))),
          m_lines(wrapped(text)),
          m_qr(QrPicture::draw(qrText.toUtf8(), qrModule))
    {
    }

    static int width() { return printable + 2 * border; }
    int height() const { return heightOf(0, m_lines.size()); }
    int lineCount() const { return m_lines.size(); }
    /// Paper for `count` lines from line `first` on; the code stands below the last line of all.
    int heightOf(int first, int count) const
    {
        const bool last = first + count == m_lines.size();
        return 2 * border + count * m_lineHeight
            + (last && !m_qr.isNull() ? m_qr.height() + m_lineHeight / 2 : 0);
    }

    void paint(QPainter &painter, int first, int count) const
    {
        painter.setFont(m_font);
        painter.setPen(QColor(0x20, 0x20, 0x22));
        const qreal cell = m_metrics.horizontalAdvance(QLatin1Char('0'));
        const qreal left = border + (printable - cell * ReceiptPicture::columns) / 2;
        qreal baseline = border + m_metrics.ascent();
        for (int line = first; line < first + count; ++line) {
            painter.drawText(QPointF(left, baseline), m_lines.at(line));
            baseline += m_lineHeight;
        }
        if (m_qr.isNull() || first + count < m_lines.size())
            return;
        const int top = border + count * m_lineHeight + m_lineHeight / 2;
        painter.drawImage(QPoint((width() - m_qr.width()) / 2, top), m_qr);
    }

private:
    QFont m_font;
    QFontMetricsF m_metrics;
    int m_lineHeight;
    QStringList m_lines;
    QImage m_qr;
};

} // namespace

QImage ReceiptPicture::draw(const QString &text, const QString &qrText)
{
    const Tape tape(text, qrText);
    QImage image(Tape::width() + 2 * surroundings, tape.height() + 2 * surroundings,
                 QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.fill(QColor(0xd6, 0xda, 0xde));
    const QPainterPath sheet =
        paper(QRectF(surroundings, surroundings, Tape::width(), tape.height()));
    for (int top = 0; top < image.height(); top += bandHeight) {
        QImage band(image.scanLine(top), image.width(), qMin(bandHeight, image.height() - top),
                    image.bytesPerLine(), image.format());
        QPainter painter(&band);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(0, -top);
        painter.fillPath(sheet.translated(3, 4), QColor(0xb4, 0xb9, 0xbe));
        painter.fillPath(sheet, QColor(0xfd, 0xfd, 0xfb));
        painter.translate(surroundings, surroundings);
        tape.paint(painter, 0, tape.lineCount());
    }
    return image;
}

QByteArray ReceiptPicture::pdf(const QString &text, const QString &qrText, const QString &title)
{
    const Tape tape(text, qrText);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(title);
    writer.setResolution(qRound(dotsPerMillimetre * 25.4 * pdfFactor));
    QPainter painter;
    for (int first = 0; first == 0 || first < tape.lineCount(); first += pdfLines) {
        const int count = qMin(pdfLines, tape.lineCount() - first);
        writer.setPageSize(QPageSize(QSizeF(Tape::width() / dotsPerMillimetre,
                                            tape.heightOf(first, count) / dotsPerMillimetre),
                                     QPageSize::Millimeter, QString(), QPageSize::ExactMatch));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        if (!(first == 0 ? painter.begin(&writer) : writer.newPage()))
            return QByteArray();
        painter.resetTransform();
        painter.scale(pdfFactor, pdfFactor);
        tape.paint(painter, first, count);
    }
    painter.end();
    return bytes;
}
