#pragma once

#include <QByteArray>
#include <QString>

/// A receipt written to a file of its own.
class ReceiptFile final
{
public:
    /// `text` and `qr` as ReceiptText makes them; `title` is what a viewer of the PDF file shows.
    ReceiptFile(const QString &text, const QString &qr, const QString &title)
        : m_text(text), m_qr(qr), m_title(title)
    {
    }

    /// PDF, PNG or text, by the ending of the name: .pdf, .png, .txt. What stood there before is
    /// lost only when the new file is complete. False: `error` says why and what to do, in Russian.
    bool save(const QString &fileName, QString *error) const;

    /// Writes all or nothing; `error` as in save().
    static bool write(const QString &fileName, const QByteArray &content, QString *error);

private:
    QString m_text;
    QString m_qr;
    QString m_title;
};
