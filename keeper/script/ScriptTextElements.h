#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "keeper/script/ScriptTextRules.h"

/// The parts of a text. A character is a code point: a surrogate pair counts as one.
namespace scriptText {

enum class Element { Character, Word, Paragraph, TextItem };

/// The stretch of a text that an element takes, in UTF-16 code units.
struct Stretch {
  qsizetype start = 0;
  qsizetype length = 0;
};

/// How many characters a text has.
qsizetype characterCount(const QString &text);
/// The stretch from the first to the last of the characters, which are counted from 1, or from the end with
/// negative numbers, and may stand the wrong way round; of length -1 if one of them is out of range.
Stretch characterStretch(const QString &text, qint64 from, qint64 to);
/// The stretches of all elements of a kind, in order. Paragraphs are parted by CR, LF or CRLF, text items by
/// the delimiters; an empty text has none of any kind.
std::vector<Stretch> stretches(const QString &text, Element element, const ScriptTextRules &rules);

/// Where `part` first stands in the text, in characters from 1; 0 if it does not, or if it is empty.
qint64 offset(const QString &part, const QString &text, const ScriptTextRules &rules);
bool contains(const QString &text, const QString &part, const ScriptTextRules &rules);
bool startsWith(const QString &text, const QString &part, const ScriptTextRules &rules);
bool endsWith(const QString &text, const QString &part, const ScriptTextRules &rules);

}  // namespace scriptText
