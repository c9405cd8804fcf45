#include "receiptfile.h"

#include "receiptpicture.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QSaveFile>

bool ReceiptFile::save(const QString &fileName, QString *error) const
{
    const QString ending = QFileInfo(fileName).suffix().toLower();
    QByteArray content;
    if (ending == QLatin1String("pdf")) {
        content = ReceiptPicture::pdf(m_text, m_qr, m_title);
    } else if (ending == QLatin1String("png")) {
        QBuffer buffer(&content);
        buffer.open(QIODevice::WriteOnly);
        // Hundreds of lines compress in a third of the time without colours, to a tenth.
        ReceiptPicture::draw(m_text, m_qr)
            .convertToFormat(QImage::Format_Grayscale8)
            .save(&buffer, "PNG");
    } else if (ending == QLatin1String("txt")) {
        content = m_text.toUtf8() + '\n';
    } else {
        *error = QStringLiteral("Имя файла «%1» должно кончаться на .pdf, .png или .txt: по нему "
                                "выбирается вид чека. Исправьте имя и повторите.")
                     .arg(fileName);
        return false;
    }
    if (content.isEmpty()) {
        *error = QStringLiteral("%1 в файл «%2» не записан: не хватило памяти. Закройте лишние "
                                "программы и повторите или сохраните чек как текст.")
                     .arg(m_title, fileName);
        return false;
    }
    return write(fileName, content, error);
}

bool ReceiptFile::write(const QString &fileName, const QByteArray &content, QString *error)
{
    QSaveFile file(fileName);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit()) {
        error->clear();
        return true;
    }
    *error = QStringLiteral("Файл «%1» не записан: %2. Проверьте папку, место на диске и права, "
                            "затем повторите.")
                 .arg(fileName, file.errorString());
    return false;
}
