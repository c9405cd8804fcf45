#pragma once

#include <QObject>
#include <QString>

class QLineEdit;

/// Tells the payment code that a keyboard scanner typed into a line edit from what stood there
/// before.
///
/// A scanner types at the cursor of whatever field has the focus, so a code can land before, behind
/// or inside a number that the cashier had entered. The stretch of text that was typed in one go is
/// followed edit by edit, because the finished text alone does not tell whether its last digits are
/// the bill's sum or an old account number. A child of the field that it watches.
class SrScanField final : public QObject
{
    Q_OBJECT

public:
    explicit SrScanField(QLineEdit *field);

    /// The payment code that the last edit brought in; empty when there is none.
    ///
    /// A code is taken out of the field, which is left with the text that was there besides it.
    QString takeCode();
    /// takeCode() of the watcher of `field`; empty for a null field and for one that nobody
    /// watches.
    static QString takeCodeFrom(QLineEdit *field);

private:
    void follow(const QString &text);
    /// Nothing of `text` was typed since the field was last left.
    void settle(const QString &text);

    QLineEdit *m_field;
    QString m_text;    ///< the field's text as of the last change
    int m_typedFrom{}; ///< where the stretch typed in one go begins
    int m_behind{};    ///< how many characters stand behind it
};
