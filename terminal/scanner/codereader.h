#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QVector>

#include <functional>

/// Finds bar codes of every kind in pictures: a file, a screenshot, a scan of paper.
class CodeReader final
{
public:
    struct Code
    {
        /// "QRCode", "DataMatrix", "EAN-13", ...
        QString format;
        /// As they stand in the code; what text they mean is for PaymentCodeReader to find out.
        QByteArray bytes;

        bool isQr() const { return format == QLatin1String("QRCode"); }
    };

    /// Asked between the looks at a picture, each a few seconds for a hundred megapixels; false
    /// ends the search without a code.
    using Step = std::function<bool(int done, int total)>;
    static constexpr qint64 MOST_PIXELS = 120000000;

    /// QR codes first, each code once; of the linear codes (EAN, Code 128, ...) one at most.
    static QVector<Code> read(const QImage &picture, const Step &step = {});
    /// Nothing with a text in `error` for what is no picture, is larger than MOST_PIXELS or has no
    /// code in it; the text is Russian.
    static QVector<Code> readFile(const QString &fileName, QString *error, const Step &step = {});
    /// What to tell a person about a picture without a code.
    static QString nothingFoundText();
};

/// The text of the payment code in a picture file, or of its first code when none is a payment
/// code. Empty with a Russian text in `error` when there is no code.
QString readCodeFromPicture(const QString &fileName, QString *error);
