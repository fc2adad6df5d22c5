#include "text/Words.h"

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

}  // namespace

const QStringList &minorWords() {
  static const QStringList words = {QStringLiteral("a"),  QStringLiteral("an"),  QStringLiteral("and"),
                                    QStringLiteral("of"), QStringLiteral("the"), QStringLiteral("is")};
  return words;
}

QString stringWithoutWords(const QString &text, const QStringList &words) {
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
