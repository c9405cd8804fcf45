#pragma once

#include <QString>

/// Texts of billing as they are put on screen: bounded, and without characters that act instead of
/// being read.
///
/// Only what is shown passes through here; receipts, packs and requests take the texts as billing
/// sent them. An ordinary text comes back unchanged. In any other
/// - a text that is too long loses its middle, with an ellipsis in its place: laying out a megabyte
///   takes minutes, and an amount that stands behind a long title must not be what is lost;
/// - invisible formatting characters are left out: a direction override would turn the digits of
///   an amount around;
/// - control characters become blanks, and what is no character at all becomes U+FFFD;
/// - of accents heaped upon one letter a few are kept, so that they do not cover the lines above.
namespace SrShownText {

/// A text of one line, for a cell, a caption or a title: at most `limit` UTF-16 units.
QString line(const QString &text, int limit = 300);
/// A text of several lines, bounded so that a message box with it fits on any screen, its button
/// included. Nothing else on screen stands in its way, so its characters stay as they are.
QString message(const QString &text);
/// `text` with places to break a line in words of more than `longestWord` letters: a label breaks
/// between words only, and is at least as wide as its longest word.
QString breakable(const QString &text, int longestWord);
/// A document of SrHtml with each text between two tags as line() shows it.
QString document(const QString &html);

} // namespace SrShownText
