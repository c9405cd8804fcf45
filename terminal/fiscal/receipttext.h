#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

/// A receipt as the tape shows it: lines of WIDTH columns, Russian. Characters the printer lacks
/// come out as "?".
class ReceiptText final
{
public:
    static constexpr int WIDTH = 48;

    /// `document` as handed to the register, `data` as the register answered (see FiscalData);
    /// without `data` the tape ends before the fiscal lines.
    ReceiptText(const QVariantMap &document, const QVariantMap &data);

    const QStringList &lines() const { return m_lines; }
    QString text() const;
    /// What the QR code under the text holds; empty for a receipt that was not registered.
    QString qr() const { return m_qr; }

private:
    QStringList m_lines;
    QString m_qr;
};
