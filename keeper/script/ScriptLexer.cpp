#include "keeper/script/ScriptLexer.h"

#include <cmath>

namespace {

/// Beyond it the language counts in reals.
constexpr qint64 kLargestInteger = 536870911;

bool isWordStart(char16_t unit) {
  return unit == u'_' || QChar::isLetter(unit);
}

bool isWordPart(char16_t unit) {
  return unit == u'_' || QChar::isLetterOrNumber(unit);
}

bool isDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

/// As many digits as a 32-bit number always holds.
constexpr qsizetype kFewDigits = 9;

qint32 wholeNumber(QStringView digits) {
  qint32 number = 0;
  for (const QChar digit : digits) number = number * 10 + (digit.unicode() - u'0');
  return number;
}

/// `1st`, `2nd`, `3rd`, `4th`, in any case.
bool countsFrom(char16_t first, char16_t second) {
  first |= 0x20;
  second |= 0x20;
  return (first == u's' && second == u't') || (first == u't' && second == u'h') ||
         ((first == u'n' || first == u'r') && second == u'd');
}

bool isSign(char16_t unit) {
  switch (unit) {
    case u'(':
    case u')':
    case u'{':
    case u'}':
    case u',':
    case u':':
    case u'+':
    case u'-':
    case u'*':
    case u'/':
    case u'÷':
    case u'^':
    case u'&':
    case u'=':
    case u'≠':
    case u'<':
    case u'>':
    case u'≤':
    case u'≥':
      return true;
    default:
      return false;
  }
}

}  // namespace

ScriptLexer::ScriptLexer(const QString &source_) : source(source_) {
  if (at() == u'\uFEFF') ++position;
}

ScriptToken ScriptLexer::next() {
  ScriptToken found = any();
  // The noise word may stand before anything and says nothing.
  while (found.isWord(u"the")) found = any();
  return found;
}

ScriptToken ScriptLexer::any() {
  skipBlanks();
  if (position >= source.size()) return token(ScriptToken::Kind::End, source.size());
  const char16_t unit = at();
  if (isLineEnd()) return lineEnd();
  if (isWordStart(unit)) return word();
  if (isDigit(unit)) return number();
  if (unit == u'"') return text();
  if (unit == u'|') return enclosed(ScriptToken::Kind::Name, u'|');
  if (unit == u'«') return enclosed(ScriptToken::Kind::Code, u'»');
  return symbol();
}

void ScriptLexer::skipBlanks() {
  while (position < source.size()) {
    const char16_t unit = at();
    if (unit == u' ' || unit == u'\t' || unit == u'\u00A0') {
      ++position;
    } else if (unit == u'#' || (unit == u'-' && at(1) == u'-')) {
      skipLine();
    } else if (unit == u'(' && at(1) == u'*') {
      skipBlockComment();
    } else if (unit == u'¬') {
      skipContinuation();
    } else {
      return;
    }
  }
}

void ScriptLexer::skipLine() {
  while (position < source.size() && !isLineEnd()) ++position;
}

void ScriptLexer::skipBlockComment() {
  const qsizetype start = position;
  int depth = 0;
  while (position < source.size()) {
    if (at() == u'(' && at(1) == u'*') {
      ++depth;
      position += 2;
    } else if (at() == u'*' && at(1) == u')') {
      position += 2;
      if (--depth == 0) return;
    } else {
      ++position;
    }
  }
  fail(QStringLiteral("Expected “*)” but found end of script."), start, 2);
}

void ScriptLexer::skipContinuation() {
  const qsizetype start = position++;
  while (at() == u' ' || at() == u'\t') ++position;
  if (!isLineEnd()) fail(QStringLiteral("Expected end of line after “¬”."), start, 1);
  position += at() == u'\r' && at(1) == u'\n' ? 2 : 1;
}

ScriptToken ScriptLexer::lineEnd() {
  const qsizetype start = position;
  position += at() == u'\r' && at(1) == u'\n' ? 2 : 1;
  return token(ScriptToken::Kind::LineEnd, start);
}

ScriptToken ScriptLexer::word() {
  const qsizetype start = position;
  const QStringView units = source;
  qsizetype place = start;
  while (place < units.size() && isWordPart(units[place].unicode())) ++place;
  position = place;
  const QStringView stem = QStringView(source).sliced(start, position - start);
  const bool shortNot = at() == u'\'' && (at(1) | 0x20) == u't' && !isWordPart(at(2));
  if (shortNot &&
      (stem.compare(u"isn", Qt::CaseInsensitive) == 0 || stem.compare(u"doesn", Qt::CaseInsensitive) == 0)) {
    position += 2;
  }
  ScriptToken found = token(ScriptToken::Kind::Word, start);
  const ScriptWords::Word &word = words.of(QStringView(source).sliced(start, position - start));
  found.text = word.text;
  found.hash = word.hash;
  found.reserved = word.reserved;
  return found;
}

ScriptToken ScriptLexer::number() {
  const qsizetype start = position;
  const auto digits = [this] {
    while (isDigit(at())) ++position;
  };
  digits();
  bool whole = true;
  if (at() == u'.' && isDigit(at(1))) {
    whole = false;
    ++position;
    digits();
  }
  const int sign = at(1) == u'+' || at(1) == u'-' ? 1 : 0;
  if ((at() | 0x20) == u'e' && isDigit(at(1 + sign))) {
    whole = false;
    position += 1 + sign;
    digits();
  }
  const QStringView written = QStringView(source).sliced(start, position - start);
  const double value = whole && written.size() <= kFewDigits ? wholeNumber(written) : written.toDouble();
  ScriptToken found = token(ScriptToken::Kind::Real, start);
  if (!std::isfinite(value))
    throw ScriptError{scriptErrors::kNumberTooLarge, QStringLiteral("The number is too large."), found.range};
  found.real = value;
  if (!whole || value > double(kLargestInteger)) return found;
  found.integer = qint64(value);
  found.kind = ScriptToken::Kind::Integer;
  if (countsFrom(at(), at(1)) && !isWordPart(at(2))) {
    position += 2;
    found.range.length += 2;
    found.kind = ScriptToken::Kind::Ordinal;
  }
  return found;
}

ScriptToken ScriptLexer::text() {
  const qsizetype start = position++;
  QString value;
  while (true) {
    const qsizetype from = position;
    while (position < source.size() && at() != u'"' && at() != u'\\') ++position;
    value += QStringView(source).sliced(from, position - from);
    if (position >= source.size()) fail(QStringLiteral("Expected “\"” but found end of script."), start, 1);
    if (source.at(position++) == u'"') break;
    switch (at()) {
      case u'"':
      case u'\\':
        value += QChar(at());
        break;
      case u'n':
        value += u'\n';
        break;
      case u'r':
        value += u'\r';
        break;
      case u't':
        value += u'\t';
        break;
      default:
        fail(QStringLiteral("Expected “\"”, “\\”, “n”, “r” or “t” after “\\” in a text."), position - 1,
             position < source.size() ? 2 : 1);
    }
    ++position;
  }
  ScriptToken found = token(ScriptToken::Kind::Text, start);
  found.text = value;
  return found;
}

ScriptToken ScriptLexer::enclosed(ScriptToken::Kind kind, char16_t closing) {
  const qsizetype start = position++;
  while (position < source.size() && !isLineEnd() && at() != closing) ++position;
  if (at() != closing) {
    fail(QStringLiteral("Expected “%1” before the end of the line.").arg(QChar(closing)), start, 1);
  }
  ++position;
  ScriptToken found = token(kind, start);
  found.text = source.sliced(start + 1, position - start - 2);
  return found;
}

ScriptToken ScriptLexer::symbol() {
  const qsizetype start = position;
  char16_t sign = at();
  if (sign == u'\'' && (at(1) | 0x20) == u's' && !isWordPart(at(2))) {
    position += 2;
    return token(ScriptToken::Kind::Possessive, start);
  }
  if (!isSign(sign)) {
    const qsizetype length = QChar::isHighSurrogate(sign) && QChar::isLowSurrogate(at(1)) ? 2 : 1;
    fail(QStringLiteral("Expected expression but found unknown token."), start, length);
  }
  ++position;
  if (at() == u'=' && (sign == u'<' || sign == u'>' || sign == u'/')) {
    sign = sign == u'<' ? u'≤' : sign == u'>' ? u'≥' : u'≠';
    ++position;
  }
  ScriptToken found = token(ScriptToken::Kind::Symbol, start);
  found.symbol = sign;
  return found;
}

ScriptToken ScriptLexer::token(ScriptToken::Kind kind, qsizetype start) const {
  ScriptToken made;
  made.kind = kind;
  made.range = {start, position - start};
  return made;
}

void ScriptLexer::fail(const QString &message, qsizetype start, qsizetype length) const {
  throw ScriptError{scriptErrors::kExpected, message, {start, length}};
}
