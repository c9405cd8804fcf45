#include "srscanfield.h"

#include "srpaymentqr.h"

#include <QLineEdit>
#include <QRegularExpression>

namespace {

/// May this stand right before a code, typed in one go with it? Nothing may, and what a cashier
/// types by hand: a telephone or account number, or an e-mail address. Anything else is the
/// beginning of another text that only looks like a code further on.
bool mayStandBeforeACode(const QString &text)
{
    static const QRegularExpression number(QStringLiteral("^([\\s+()-]*\\d[\\d\\s+()-]*)?$"));
    return text.contains(QLatin1Char('@')) || number.match(text).hasMatch();
}

} // namespace

SrScanField::SrScanField(QLineEdit *field) : QObject(field), m_field(field)
{
    settle(field->text());
    connect(field, &QLineEdit::textEdited, this, &SrScanField::follow);
    // An edit has been followed before it gets here; what is left are texts set by the program.
    connect(field, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (text != m_text)
            settle(text);
    });
}

void SrScanField::settle(const QString &text)
{
    m_text = text;
    m_typedFrom = text.size();
    m_behind = 0;
}

void SrScanField::follow(const QString &text)
{
    const int end = m_field->cursorPosition();
    const int behind = text.size() - end;
    const bool nextCharacter = behind == m_behind && text.size() == m_text.size() + 1;
    if (!nextCharacter) {
        // Where the text went in; for one that was typed over another, its last character is all
        // that is certain. Unless what stands before it has changed as well.
        m_typedFrom = qMax(0, qMin(m_text.size() - behind, end - 1));
        if (text.leftRef(m_typedFrom) != m_text.leftRef(m_typedFrom))
            m_typedFrom = 0;
        m_behind = behind;
    }
    m_text = text;
}

QString SrScanField::takeCode()
{
    const QString text = m_text;
    const QString typed = text.mid(m_typedFrom, text.size() - m_behind - m_typedFrom);
    // All of it when there is no prefix.
    const QString before = typed.left(typed.indexOf(SrPaymentQr::PREFIX));
    const QString code = typed.mid(before.size());
    if (mayStandBeforeACode(before) && SrPaymentQr::isPaymentCode(code)) {
        m_field->setText(text.left(m_typedFrom) + before + text.right(m_behind));
        return code;
    }
    // A code that was pieced together or corrected by hand fills the field from its start.
    if (SrPaymentQr::isPaymentCode(text)) {
        m_field->clear();
        return text;
    }
    // What is typed from now on is no continuation.
    settle(text);
    return {};
}

QString SrScanField::takeCodeFrom(QLineEdit *field)
{
    auto *watcher = field ? field->findChild<SrScanField *>() : nullptr;
    return watcher ? watcher->takeCode() : QString();
}
