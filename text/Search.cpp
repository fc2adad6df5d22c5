#include "text/Search.h"

namespace {

char16_t foldedUnit(char16_t unit) {
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? char16_t(unit + 0x20) : unit;
  return QChar(unit).toCaseFolded().unicode();
}

bool holdsSurrogate(QStringView text) {
  for (const QChar unit : text) {
    if (unit.isSurrogate()) return true;
  }
  return false;
}

qsizetype indexOfFolded(QStringView text, QStringView folded, qsizetype from) {
  const qsizetype last = text.size() - folded.size();
  const char16_t *units = text.utf16(), *wanted = folded.utf16();
  const bool startsWithBlank = !folded.isEmpty() && wanted[0] == u' ';
  for (qsizetype start = from; start <= last; ++start) {
    if (startsWithBlank && units[start] != u' ') continue;
    qsizetype same = 0;
    while (same < folded.size() && foldedUnit(units[start + same]) == wanted[same]) ++same;
    if (same == folded.size()) return start;
  }
  return -1;
}

}  // namespace

QString foldedCase(QStringView text) {
  QString folded = text.toString();
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
      const char32_t point = QChar::toCaseFolded(QChar::surrogateToUcs4(text[i], text[i + 1]));
      folded[i] = QChar(QChar::highSurrogate(point));
      folded[++i] = QChar(QChar::lowSurrogate(point));
    } else {
      folded[i] = QChar(foldedUnit(text[i].unicode()));
    }
  }
  return folded;
}

QString replacingFolded(const QString &text, const QString &folded, const QString &replacement) {
  if (folded.isEmpty()) return text;
  // Letters beyond the first plane fold in pairs.
  const bool inPairs = holdsSurrogate(folded);
  const QString pairs = inPairs ? foldedCase(text) : QString();
  const QStringView searched = inPairs ? QStringView(pairs) : QStringView(text);
  QString result;
  qsizetype done = 0;
  for (qsizetype at; (at = indexOfFolded(searched, folded, done)) >= 0; done = at + folded.size())
    result.append(QStringView(text).mid(done, at - done)).append(replacement);
  return done == 0 ? text : result.append(QStringView(text).mid(done));
}

bool containsString(const QString &text, const QString &other) {
  return !other.isEmpty() && indexOfFolded(foldedCase(text), foldedCase(other), 0) >= 0;
}

QString stringByReplacingOccurrencesOfStringWithStringOptions(const QString &text, const QString &target,
                                                              const QString &replacement,
                                                              SearchOption option) {
  if (target.isEmpty()) return text;
  if (option == SearchOption::CaseInsensitive) return replacingFolded(text, foldedCase(target), replacement);
  QString replaced = text;
  return replaced.replace(target, replacement);
}
