#include "billwriter.h"

#include "billhtml.h"
#include "qrpicture.h"
#include "qrtextobject.h"

#include <text/showntext.h>

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFont>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextCursor>
#include <QTextDocument>

#include <cmath>

namespace {

constexpr qreal unitsPerInch = 96; // of the document's layout, whatever it is drawn on
constexpr qreal millimetresPerInch = 25.4;
constexpr qreal pageWidth = 210; // millimetres, and so below
constexpr qreal pageHeight = 297;
constexpr qreal marginSide = 15;
constexpr qreal marginTop = 12;
constexpr qreal smallestCode = 36;
constexpr qreal smallestModule = 0.5;
constexpr int pictureDots = 200; // per inch, of a saved picture

qreal units(qreal millimetres)
{
    return millimetres * unitsPerInch / millimetresPerInch;
}

} // namespace

BillWriter::BillWriter(const Bill &bill, const QByteArray &code)
    : m_document(std::make_unique<QTextDocument>()), m_title(shownCell(bill.title()))
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    m_document->setDefaultFont(font);
    m_document->setDocumentMargin(0);
    m_document->setPageSize(
        QSizeF(units(pageWidth - 2 * marginSide), units(pageHeight - 2 * marginTop)));
    new QrTextObject(m_document.get());
    m_document->setHtml(BillHtml::html(bill));

    const int modules = QrPicture::draw(code, 1).width();
    m_codeSide = modules > 0 ? qMax(smallestCode, modules * smallestModule) : 0;
    QTextCursor place = m_document->find(BillHtml::codePlace());
    if (modules > 0)
        QrTextObject::insert(place, code, units(m_codeSide));
    else
        place.insertText(QStringLiteral("Кода нет"));
}

BillWriter::~BillWriter() = default;

int BillWriter::pageCount() const
{
    return m_document->pageCount();
}

void BillWriter::drawPage(QPainter &painter, int page, qreal scale) const
{
    const QSizeF size = m_document->pageSize();
    painter.save();
    painter.scale(scale, scale);
    painter.translate(units(marginSide), units(marginTop));
    if (pageCount() > 1) {
        QFont font = m_document->defaultFont();
        font.setPixelSize(10);
        painter.setFont(font);
        painter.setPen(Qt::black);
        painter.drawText(
            QRectF(0, size.height(), size.width(), units(marginTop) * 0.8),
            Qt::AlignRight | Qt::AlignVCenter,
            QStringLiteral("%1, страница %2 из %3")
                .arg(m_title, QString::number(page + 1), QString::number(pageCount())));
    }
    painter.translate(0, -page * size.height());
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    context.clip = QRectF(0, page * size.height(), size.width(), size.height());
    painter.setClipRect(context.clip);
    m_document->documentLayout()->draw(&painter, context);
    painter.restore();
}

QImage BillWriter::picture(int dotsPerInch) const
{
    const auto pixels = [dotsPerInch](qreal millimetres) {
        return int(std::lround(millimetres * dotsPerInch / millimetresPerInch));
    };
    const int page = pixels(pageHeight);
    QImage image(pixels(pageWidth), page * pageCount(), QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDotsPerMeterX(int(std::lround(dotsPerInch * 1000 / millimetresPerInch)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    for (int i = 0; i < pageCount(); ++i) {
        painter.save();
        painter.translate(0, i * page);
        drawPage(painter, i, dotsPerInch / unitsPerInch);
        painter.restore();
    }
    return image;
}

bool BillWriter::save(const QString &fileName, QString *error) const
{
    const bool pdf = fileName.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive);
    if (!pdf && !fileName.endsWith(QLatin1String(".png"), Qt::CaseInsensitive)) {
        *error = QStringLiteral("Имя файла «%1» должно кончаться на .pdf или .png.").arg(fileName);
        return false;
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    bool drawn = true;
    if (pdf) {
        QPdfWriter writer(&buffer);
        writer.setTitle(m_title);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        writer.setResolution(1200);
        QPainter painter;
        drawn = painter.begin(&writer);
        for (int i = 0; drawn && i < pageCount(); ++i) {
            drawPage(painter, i, writer.resolution() / unitsPerInch);
            if (i + 1 < pageCount())
                writer.newPage();
        }
        drawn = drawn && painter.end();
    } else {
        drawn = picture(pictureDots).save(&buffer, "PNG");
    }
    buffer.close();

    QSaveFile file(fileName);
    if (drawn && file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()
        && file.commit()) {
        error->clear();
        return true;
    }
    *error =
        QStringLiteral(
            "Квитанция в файл «%1» не записана: %2. Проверьте папку, место на диске и права, затем "
            "повторите.")
            .arg(fileName, drawn ? file.errorString() : QStringLiteral("не хватило памяти"));
    return false;
}
