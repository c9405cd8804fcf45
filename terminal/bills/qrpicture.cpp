#include "qrpicture.h"

#include <QPainter>

#include <memory>

#include <qrencode.h>

namespace {

constexpr int quietZone = 4; // modules

} // namespace

QImage QrPicture::draw(const QByteArray &data, int module)
{
    if (data.isEmpty() || module < 1)
        return QImage();
    const auto *bytes = reinterpret_cast<const unsigned char *>(data.constData());
    const std::unique_ptr<QRcode, decltype(&QRcode_free)> code(
        QRcode_encodeData(data.size(), bytes, 0, QR_ECLEVEL_M), &QRcode_free);
    if (!code)
        return QImage();

    const int side = (code->width + 2 * quietZone) * module;
    QImage image(side, side, QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (int row = 0; row < code->width; ++row) {
        for (int column = 0; column < code->width; ++column) {
            if (code->data[row * code->width + column] & 1) {
                painter.fillRect((column + quietZone) * module, (row + quietZone) * module, module,
                                 module, Qt::black);
            }
        }
    }
    return image;
}
