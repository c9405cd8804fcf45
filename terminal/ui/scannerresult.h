#pragma once

#include <bills/paymentcodereader.h>

#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QTableWidget;

/// Shows what a code holds: its kind, its fields, and what is wrong with it.
class ScannerResult final : public QWidget
{
    Q_OBJECT

public:
    explicit ScannerResult(QWidget *parent = nullptr);

    /// `format`: the kind of bar code, "QRCode"; empty when there was no picture.
    void setCode(const ReadCode &code, const QString &format);
    /// In place of a code, what went wrong or what to do.
    void setNote(const QString &note);

private:
    QLabel *m_summary;
    QTableWidget *m_fields;
    QPlainTextEdit *m_warnings;
};
