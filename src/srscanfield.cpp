#include "srscanfield.h"

#include "srpaymentqr.h"

#include <QLineEdit>
#include <QRegularExpression>

namespace {

/// What a cashier may have typed by hand right before the scan, so that it is no part of a mistyped
/// code: a telephone or account number, or an e-mail address.
bool isEnteredByHand(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^[\\s+()-]*\\d[\\d\\s+()-]*$"));
    return text.contains(QLatin1Char('@')) || number.match(text).hasMatch();
}

} // namespace

SrScanField::SrScanField(QLineEdit *field) : QObject(field), m_field(field)
{
    connect(field, &QLineEdit::textEdited, this, &SrScanField::follow);
}

void SrScanField::follow(const QString &text)
{
    const int cursor = m_field->cursorPosition();
    const int behind = text.size() - cursor;
    const bool nextCharacter = behind == m_behind && text.size() == m_text.size() + 1
        && cursor > m_typedFrom && text.leftRef(cursor - 1) == m_text.leftRef(cursor - 1);
    if (!nextCharacter) {
        // A first character, a deletion or a pasted text: what stood before the cursor and is still
        // there is not part of it.
        const int kept = m_text.size() - behind;
        const bool inserted =
            kept >= 0 && kept < cursor && text.leftRef(kept) == m_text.leftRef(kept);
        const bool replacedByOne =
            !inserted && cursor > 0 && m_text.startsWith(text.leftRef(cursor - 1));
        m_typedFrom = inserted ? kept : replacedByOne ? cursor - 1 : 0;
        m_behind = behind;
    }
    m_text = text;
}

QString SrScanField::takeCode()
{
    const QString text = m_field->text();
    if (text != m_text) {
        m_text = text;
        m_typedFrom = 0;
        m_behind = 0;
    }
    const QString typed = text.mid(m_typedFrom, text.size() - m_behind - m_typedFrom);
    int start = typed.indexOf(SrPaymentQr::PREFIX);
    if (start > 0 && !isEnteredByHand(typed.left(start)))
        start = -1;
    if (start < 0 || !SrPaymentQr::isPaymentCode(typed.mid(start))) {
        // What is typed from now on is no continuation.
        m_typedFrom = text.size() - m_behind;
        // A code that was pieced together or corrected by hand fills the field from its start.
        if (!SrPaymentQr::isPaymentCode(text))
            return {};
        m_field->clear();
        m_text.clear();
        m_typedFrom = 0;
        m_behind = 0;
        return text;
    }

    m_text = text.left(m_typedFrom + start) + text.right(m_behind);
    m_typedFrom = m_text.size();
    m_behind = 0;
    m_field->setText(m_text);
    return typed.mid(start);
}

QString SrScanField::takeCodeFrom(QLineEdit *field)
{
    auto *watcher = field ? field->findChild<SrScanField *>() : nullptr;
    return watcher ? watcher->takeCode() : QString();
}
