#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include "audio/tags/MP3InfoTag.h"

/// Texts inside the bytes of an ID3 tag. An offset or a length may lie beyond the bytes; a text that is not
/// there is null, and an empty one that is there is not. UTF-16 without a mark is big-endian, lone surrogates
/// stay; a mark in UTF-8 stays too. Any thread.
namespace id3text {

/// Four bytes of seven bits each, the highest first.
quint32 getSynchSafeIntInAtOffset(QByteArrayView data, qint64 offset);

/// A text of a version 1 block, or a frame's id: up to the first zero byte or `maxLength` bytes, without
/// blanks and control characters at its end; null if nothing is left. UTF-8, or ISO Latin-1 for what is none.
QString id3v1StringInAtOffsetMaxLength(QByteArrayView data, qint64 offset, qint64 maxLength);

/// The one text of a version 2.2 frame, that may be empty: ISO Latin-1 up to a zero byte for encoding 0, else
/// UTF-16 in whole units without one zero unit at the end.
QString id3v22StringInAtOffsetEncodingMaxLength(QByteArrayView data, qint64 offset, quint8 encoding,
                                                qint64 maxLength);

/// One text of a version 2.3 or 2.4 frame; null if it is empty. Encodings: 0 ISO Latin-1, 1 and 2 UTF-16, 3
/// UTF-8. `maxLength` becomes the number of bytes used, the text's end included, which can be up to three
/// more than it was; it stays for an encoding above 3 and for an offset outside.
///
/// UTF-16 is read up to the last unit of `data`, which is left out: it is taken for a zero unit.
QString id3v23StringInAtOffsetEncodingMaxLength(QByteArrayView data, qint64 offset, qint32 encoding,
                                                qint64 &maxLength);

/// All texts of a text frame, whose first byte is the encoding. A byte from 4 to 31 counts as encoding 0, a
/// larger one as a letter of a text without an encoding byte; both are logged. Empty for a range outside.
/// Throws TagError for more than `kMostTexts`, which would take many times their bytes in memory.
inline constexpr qsizetype kMostTexts = 1 << 15;
QStringList id3v23StringsInWithinRange(QByteArrayView data, qint64 start, qint64 length);

/// Lyrics: language, description and text, each null if it is not there. Without a text all three are null.
TextBlock textBlockInWithinRange(QByteArrayView data, qint64 start, qint64 length);

/// Null for bytes that are no UTF-8; the empty text for none.
QString utf8(QByteArrayView bytes);

}  // namespace id3text
