#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

/// A receipt as the register's tape of 80 mm looks: 203 dots per inch, 576 printable dots, 48
/// columns, the QR code below.
class ReceiptPicture
{
public:
    static constexpr int columns = 48;

    /// `text`: lines of at most 48 columns; longer ones are wrapped, nothing is cut. An empty
    /// `qrText` leaves the code out.
    static QImage draw(const QString &text, const QString &qrText);
    /// The same paper as a PDF file, 80 mm wide, its text as text; a receipt longer than a page may
    /// be continues on the next one.
    static QByteArray pdf(const QString &text, const QString &qrText, const QString &title);
};
