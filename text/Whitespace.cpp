#include "text/Whitespace.h"

#include <algorithm>

namespace {

bool isWhitespace(QChar unit) {
  return unit == u' ' || unit == u'\t' || (unit >= u'\x80' && unit.category() == QChar::Separator_Space);
}

bool isZeroWidth(QChar unit) {
  return unit == u'\x200B' || unit == u'\x200C' || unit == u'\x200D' || unit == u'\xFEFF';
}

}  // namespace

QString trimmedOfWhitespace(const QString &text) {
  qsizetype from = 0, to = text.size();
  while (from < to && isWhitespace(text[from])) ++from;
  while (to > from && isWhitespace(text[to - 1])) --to;
  return to - from == text.size() ? text : text.mid(from, to - from);
}

bool containsRedundantWhitespace(const QString &text) {
  return text.contains(QStringLiteral("  "));
}

bool containsZeroWidthCharacter(const QString &text) {
  return std::any_of(text.begin(), text.end(), isZeroWidth);
}

QString stringWithVisibleZeroWidthCharacters(const QString &text) {
  QString visible = text;
  if (containsZeroWidthCharacter(text))
    std::replace_if(visible.begin(), visible.end(), isZeroWidth, QChar(0x2423));
  return visible;
}
