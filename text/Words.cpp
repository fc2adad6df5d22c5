#include "text/Words.h"

#include <algorithm>

#include "text/Search.h"

namespace {

QString withoutOuter(const QString &text) {
  const auto isOuter = [](QChar c) {
    return c == u'\r' || c == u'\n' || c == u'\t' || c == u' ' || c == u',';
  };
  qsizetype from = 0, to = text.size();
  while (from < to && isOuter(text[from])) ++from;
  while (to > from && isOuter(text[to - 1])) --to;
  return text.mid(from, to - from);
}

/// False only if none of the words stands between blanks or at an end.
bool mayHoldOne(QStringView text, const QStringList &words) {
  const auto hasBlank = [](const QString &word) { return word.contains(u' '); };
  if (std::any_of(words.begin(), words.end(), hasBlank)) return true;
  for (const QStringView piece : text.tokenize(u' ')) {
    for (const QString &word : words) {
      if (piece.size() == word.size() && piece.compare(word, Qt::CaseInsensitive) == 0) return true;
    }
  }
  return false;
}

}  // namespace

const QStringList &minorWords() {
  static const QStringList words = {QStringLiteral("a"),  QStringLiteral("an"),  QStringLiteral("and"),
                                    QStringLiteral("of"), QStringLiteral("the"), QStringLiteral("is")};
  return words;
}

QString stringWithoutWords(const QString &text, const QStringList &words) {
  if (!mayHoldOne(text, words)) return text.trimmed();
  const QString blank(u' ');
  QString working = blank + text + blank;
  for (const QString &word : words)
    working = replacingFolded(working, foldedCase(blank + word + blank), blank);
  return working.trimmed();
}

QString normalizedString(const QString &text) {
  const QStringList pieces = text.split(QStringLiteral(", "));
  if (pieces.size() != 2 || pieces[0].isEmpty() || !minorWords().contains(pieces[1].toLower())) return text;
  return withoutOuter(pieces[1]) + u' ' + withoutOuter(pieces[0]);
}
