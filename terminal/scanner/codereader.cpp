#include "codereader.h"

#include <bills/paymentcodereader.h>

#include <QImageReader>
#include <QPainter>
#include <QPolygon>

#include <algorithm>

#include <ZXing/ReadBarcode.h>

namespace {

constexpr int smallSide = 600;        // pixels; below it three times the size is still cheap
constexpr int mediumPixels = 6000000; // a page at 250 dots an inch
constexpr int largePixels = 24000000; // reduced first: a photograph
constexpr int quietBorder = 16;

/// Grey on white, with a margin: a code cut out of the screen has none of its own.
QImage prepared(const QImage &picture, double factor)
{
    const QSize size(qMax(1, qRound(picture.width() * factor)),
                     qMax(1, qRound(picture.height() * factor)));
    QImage result(size + QSize(2 * quietBorder, 2 * quietBorder), QImage::Format_RGB32);
    if (result.isNull())
        return result;
    result.fill(Qt::white);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRect(QPoint(quietBorder, quietBorder), size), picture);
    painter.end();
    return result.convertToFormat(QImage::Format_Grayscale8);
}

QPolygon placeOf(const ZXing::Result &result)
{
    QPolygon corners;
    for (const ZXing::PointI &corner : result.position())
        corners.append(QPoint(corner.x, corner.y));
    return corners;
}

QVector<CodeReader::Code> find(const QImage &gray)
{
    QVector<CodeReader::Code> codes;
    if (gray.isNull())
        return codes;
    using ZXing::BarcodeFormat;
    const ZXing::ImageView view(gray.constBits(), gray.width(), gray.height(),
                                ZXing::ImageFormat::Lum, gray.bytesPerLine());
    const auto hints =
        ZXing::DecodeHints().setTryHarder(true).setTryRotate(true).setTryDownscale(false);
    ZXing::Results results =
        ZXing::ReadBarcodes(view, ZXing::DecodeHints(hints).setFormats(BarcodeFormat::MatrixCodes));
    // One linear code at most: the library aborts when it meets the same one twice in a picture.
    const ZXing::Result linear =
        ZXing::ReadBarcode(view, ZXing::DecodeHints(hints).setFormats(BarcodeFormat::LinearCodes));
    // A row of a large QR code now and then looks like a short number in bars.
    const QPoint middle = placeOf(linear).boundingRect().center();
    const bool isRowOfAnother =
        std::any_of(results.cbegin(), results.cend(), [&middle](const ZXing::Result &matrix) {
            return placeOf(matrix).containsPoint(middle, Qt::OddEvenFill);
        });
    if (!isRowOfAnother)
        results.push_back(linear);
    for (const ZXing::Result &result : results) {
        if (!result.isValid() || result.bytes().empty())
            continue;
        CodeReader::Code code;
        code.format = QString::fromLatin1(ZXing::ToString(result.format()));
        code.bytes = QByteArray(reinterpret_cast<const char *>(result.bytes().data()),
                                int(result.bytes().size()));
        const bool known =
            std::any_of(codes.cbegin(), codes.cend(), [&code](const CodeReader::Code &other) {
                return other.format == code.format && other.bytes == code.bytes;
            });
        if (!known)
            codes.append(code);
    }
    std::stable_sort(
        codes.begin(), codes.end(),
        [](const CodeReader::Code &a, const CodeReader::Code &b) { return a.isQr() && !b.isQr(); });
    return codes;
}

bool hasQr(const QVector<CodeReader::Code> &codes)
{
    return !codes.isEmpty() && codes.constFirst().isQr();
}

} // namespace

QVector<CodeReader::Code> CodeReader::read(const QImage &picture, const Step &step)
{
    if (picture.isNull())
        return {};
    // A module of two or three blurred pixels is told apart at another size; which one depends on
    // the blur.
    const qint64 pixels = qint64(picture.width()) * picture.height();
    QVector<double> factors{1, 1.25, 0.75, 0.5};
    if (pixels > largePixels)
        factors = {0.5, 0.25, 1};
    else if (pixels < mediumPixels)
        factors.insert(1, 2);
    if (qMin(picture.width(), picture.height()) < smallSide)
        factors.append(3);

    QVector<Code> best;
    int looks = 0;
    const auto goOn = [&] { return !step || step(looks++, factors.size() + 1); };
    for (const double factor : qAsConst(factors)) {
        if (!goOn())
            return {};
        const QVector<Code> found = find(prepared(picture, factor));
        if (hasQr(found))
            return found;
        if (best.isEmpty())
            best = found;
    }
    if (!goOn())
        return {};
    QImage inverted = prepared(picture, 1);
    inverted.invertPixels();
    const QVector<Code> light = find(inverted);
    return hasQr(light) ? light : best;
}

QVector<CodeReader::Code> CodeReader::readFile(const QString &fileName, QString *error,
                                               const Step &step)
{
    QImageReader reader(fileName);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (qint64(size.width()) * size.height() > MOST_PIXELS) {
        *error = QStringLiteral("Картинка «%1» слишком велика: %2 на %3 точек. Вырежьте из неё код "
                                "или уменьшите её.")
                     .arg(fileName, QString::number(size.width()), QString::number(size.height()));
        return {};
    }
    const QImage picture = reader.read();
    if (picture.isNull()) {
        *error = QStringLiteral("Файл «%1» как картинка не читается: %2. Подойдут PNG, JPEG, BMP.")
                     .arg(fileName, reader.errorString());
        return {};
    }
    const QVector<Code> codes = read(picture, step);
    *error = codes.isEmpty() ? nothingFoundText() : QString();
    return codes;
}

QString CodeReader::nothingFoundText()
{
    return QStringLiteral(
        "Кода на картинке не видно. Он должен быть виден целиком, с белым полем вокруг, "
        "не смазан и не мельче двух точек на клетку.");
}

QString readCodeFromPicture(const QString &fileName, QString *error)
{
    const QVector<CodeReader::Code> codes = CodeReader::readFile(fileName, error);
    QString first;
    for (const CodeReader::Code &code : codes) {
        const ReadCode read = PaymentCodeReader::read(code.bytes);
        if (read.kind == ReadCode::Kind::Payment)
            return read.text;
        if (first.isEmpty())
            first = read.text;
    }
    return first;
}
