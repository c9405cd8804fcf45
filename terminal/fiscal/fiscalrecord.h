#pragma once

#include <QDateTime>
#include <QString>
#include <QVariantMap>
#include <QtGlobal>

/// One document in the fiscal storage.
struct FiscalRecord
{
    /// Numbers of the document forms in the fiscal data format.
    enum class Form { OpenShift = 2, Receipt = 3, CloseShift = 5 };

    Form form = Form::Receipt;
    /// Tag 1040: running number over the storage's life.
    qint64 number = 0;
    /// Tag 1041: 16 digits.
    QString storage;
    /// Tag 1077 as printed: 10 digits.
    QString sign;
    int shift = 0;
    /// Tag 1042: from 1 in every shift; 0 for a report.
    int receipt = 0;
    QDateTime time;
    /// The number under which the workstation handed the receipt in.
    QString documentNumber;
    /// Tag 1020 in kopecks.
    qint64 total = 0;
    /// Tag 1196.
    QString qr;
    QVariantMap document;
    /// What the register answered: "fiscprops", "data", "document".
    QVariantMap result;
    /// False when the register lost power or paper after it had registered the document: the
    /// workstation was told of an error.
    bool answered = true;
};

/// What of a receipt is needed to find its charge and its pay pack. Money is kopecks.
struct ReceiptHead
{
    qint64 number = 0;
    QDateTime time;
    QString documentNumber;
    /// Tag 1054: 1 for money taken.
    int settlementSign = 0;
    qint64 total = 0;
    /// Tags 1031 and 1081.
    qint64 cash = 0;
    qint64 cashless = 0;
    bool answered = true;
};

namespace FiscalData {
/// Keys of the map "data" of a printed receipt.
extern const QString STORAGE;         ///< "fn"
extern const QString NUMBER;          ///< "fd"
extern const QString SIGN;            ///< "fp"
extern const QString SHIFT;           ///< "shift"
extern const QString RECEIPT;         ///< "receipt"
extern const QString TIME;            ///< "time", ISO 8601 without offset: the register's own clock
extern const QString QR;              ///< "qr"
extern const QString DOCUMENT_NUMBER; ///< "documentNumber"
} // namespace FiscalData
