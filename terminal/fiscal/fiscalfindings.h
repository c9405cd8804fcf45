#pragma once

#include <fiscal/fiscaldocumentchecker.h>

#include <QString>
#include <QVariantMap>
#include <QVector>

#include <initializer_list>

/// Collects findings about one receipt and holds the checks that several tags share.
///
/// `map` is the document or one of its nested structures, `what` names the value for a person. An
/// absent tag passes every check but required().
class FiscalFindings final
{
public:
    QVector<FiscalFinding> list() const { return m_list; }
    /// Put before the texts of what is found from now on, for example the line of the receipt.
    void setPlace(const QString &place) { m_place = place; }

    void error(int tag, const QString &text);
    void warning(int tag, const QString &text);

    bool required(const QVariantMap &map, int tag, const QString &what);
    /// Length and characters of a text.
    void text(const QVariantMap &map, int tag, int limit, const QString &what);
    /// 12 characters: 12 digits, or 10 digits and two blanks. A wrong check digit is a warning; 12
    /// zeros stand for somebody without a number.
    void inn(const QVariantMap &map, int tag, const QString &what);
    void integerOf(const QVariantMap &map, int tag, std::initializer_list<int> allowed,
                   const QString &what);
    /// A whole number of kopecks from 0 to 6 bytes; true fills `value`.
    bool money(const QVariantMap &map, int tag, const QString &what, qint64 *value);
    /// A list of telephone numbers.
    void phones(const QVariantMap &map, int tag, const QString &what);

    static bool isDigits(const QString &text);
    /// "+" and up to 18 digits.
    static bool isPhone(const QString &text);
    static QString rubles(qint64 kopecks);
    /// Rough size of the tags of a map in the fiscal document, with four bytes for each header.
    static int bytesOf(const QVariantMap &map);

private:
    void add(FiscalFinding::Severity severity, int tag, const QString &text);

    QVector<FiscalFinding> m_list;
    QString m_place;
};
