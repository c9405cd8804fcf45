#pragma once

#include <bills/bill.h>

#include <QByteArray>
#include <QImage>
#include <QSizeF>
#include <QString>

#include <memory>

class QPainter;
class QTextDocument;

/// One layout of a bill, drawn as a picture or into a PDF file: A4 pages, the code on the first of
/// them.
class BillWriter final
{
public:
    /// An empty `code` leaves a note in the place of the picture.
    BillWriter(const Bill &bill, const QByteArray &code);
    ~BillWriter();

    int pageCount() const;
    /// All pages, one below the other.
    QImage picture(int dotsPerInch) const;

    /// Writes a PDF or PNG file, by the ending of the name. What stood there before is lost only
    /// when the new file is complete. False: `error` says why and what to do, in Russian.
    bool save(const QString &fileName, QString *error) const;

    /// Side of the printed code with its quiet zone, in millimetres: 30 or more.
    qreal codeSide() const { return m_codeSide; }

private:
    void drawPage(QPainter &painter, int page, qreal scale) const;

    std::unique_ptr<QTextDocument> m_document;
    QString m_title;
    qreal m_codeSide = 0;
};
