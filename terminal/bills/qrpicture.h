#pragma once

#include <QByteArray>
#include <QImage>

/// A QR code as a picture.
class QrPicture
{
public:
    /// Black on white with the quiet zone of four modules that decoders need; error correction
    /// level M. `module`: side of one module in pixels. A null image when the data is empty or too
    /// long for a code.
    static QImage draw(const QByteArray &data, int module);
};
