#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

/// The character sets of a payment code; the number is the digit that a code declares in its
/// header.
enum class CodeEncoding { Windows1251 = 1, Utf8 = 2, Koi8R = 3 };

namespace CodeEncodings {

QVector<CodeEncoding> all();
/// "windows-1251", "UTF-8", "KOI8-R": the same in every interface language.
QString name(CodeEncoding encoding);
/// Takes the names above in any case, "1251", "utf8", "koi8" and the digit itself.
std::optional<CodeEncoding> fromName(const QString &name);
std::optional<CodeEncoding> fromDigit(QChar digit);

/// Characters of `text` that `encoding` cannot express, each once, in the order of the text.
QString lacking(const QString &text, CodeEncoding encoding);
/// What the encoding lacks becomes "?": ask lacking() first.
QByteArray encode(const QString &text, CodeEncoding encoding);
QString decode(const QByteArray &bytes, CodeEncoding encoding);

/// The encoding that the bytes really have. The declared one decides between the two sets of single
/// bytes as long as it gives a readable text, and for bytes that are the same in all three.
CodeEncoding detect(const QByteArray &bytes, std::optional<CodeEncoding> declared);

/// A text whose UTF-8 bytes were taken for windows-1251 or Latin-1 and encoded once more, repaired;
/// nothing for a text that is in order.
std::optional<QString> repaired(const QString &text);

} // namespace CodeEncodings
