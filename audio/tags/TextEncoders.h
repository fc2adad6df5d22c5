#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

/// Texts as the bytes of an ID3 tag. Any thread.
namespace id3text {

/// ISO Latin-1 without loss; nothing if a character has no form there.
std::optional<QByteArray> exactLatin1(const QString &text);
/// ISO Latin-1 with "?" for what it lacks.
QByteArray lossyLatin1(const QString &text);
/// FE FF and then the text's units, high byte first, for the empty text too; without an end.
QByteArray bigEndianUnicodeData(const QString &text);

}  // namespace id3text
