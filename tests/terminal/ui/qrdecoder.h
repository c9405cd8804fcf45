#pragma once

#include <QByteArray>
#include <QImage>

#include <ZXing/ReadBarcode.h>

/// The bytes of the one QR code in the picture; empty when there is none that can be read.
inline QByteArray decodeQr(const QImage &picture)
{
    const QImage gray = picture.convertToFormat(QImage::Format_Grayscale8);
    const ZXing::ImageView view(gray.constBits(), gray.width(), gray.height(),
                                ZXing::ImageFormat::Lum, gray.bytesPerLine());
    const ZXing::Result result = ZXing::ReadBarcode(
        view, ZXing::DecodeHints().setFormats(ZXing::BarcodeFormat::QRCode).setTryHarder(true));
    if (!result.isValid())
        return QByteArray();
    return QByteArray(reinterpret_cast<const char *>(result.bytes().data()),
                      int(result.bytes().size()));
}
