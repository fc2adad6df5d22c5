#include "text/Enclosed.h"

QString stringWithStrippedEnclosedByCharToChar(const QString &text, QChar opening, QChar closing) {
  QString result = text;
  while (result.size() > 2) {
    const qsizetype from = result.indexOf(opening);
    const qsizetype to = from < 0 ? -1 : result.indexOf(closing, from);
    if (to < 0) break;
    result = (result.left(from) + result.mid(to + 1)).trimmed();
  }
  return result;
}

QString stringWithStrippedBracketedText(const QString &text) {
  return stringWithStrippedEnclosedByCharToChar(text, u'[', u']');
}

QString stringWithStrippedParenthesizedText(const QString &text) {
  return stringWithStrippedEnclosedByCharToChar(text, u'(', u')');
}

QString stringByRemovingSurroundingQuotes(const QString &text) {
  const bool isQuoted = text.size() >= 3 && text.startsWith(u'"') && text.endsWith(u'"');
  return isQuoted ? text.mid(1, text.size() - 2) : text;
}
