#pragma once

#include <QMetaType>
#include <QString>
#include <QVariantMap>
#include <QVector>

/// What the checker found in a receipt.
struct FiscalFinding
{
    enum class Severity {
        Error,  ///< the register must not print the receipt
        Warning ///< printed, but not as given
    };

    Severity severity = Severity::Error;
    /// Tag of the fiscal data format, 0 when the finding is about the document as a whole.
    int tag = 0;
    /// Russian: what is wrong and where.
    QString text;
};

/// Checks a receipt under the fiscal data format (FFD 1.05) before it is printed: required tags,
/// lengths in CP866, kinds, the arithmetic of lines, total and payments, taxpayer numbers, agent
/// and supplier data, size.
///
/// Keys of the document are decimal tags, money is whole kopecks (see Check::toDocument). The name
/// of a line (1030) may be absent from an advance only: the law lets it out where the list of
/// services is not known yet (54-FZ, article 4.7, clause 1).
class FiscalDocumentChecker final
{
public:
    /// Bytes of a receipt document and of one line of it.
    static constexpr int MAX_DOCUMENT_BYTES = 32768;
    static constexpr int MAX_ITEM_BYTES = 1024;

    QVector<FiscalFinding> check(const QVariantMap &document) const;
    /// True when no finding is an error.
    static bool printable(const QVector<FiscalFinding> &findings);
    /// Texts of the errors, one per line.
    static QString errorText(const QVector<FiscalFinding> &findings);
};

Q_DECLARE_METATYPE(FiscalFinding)
