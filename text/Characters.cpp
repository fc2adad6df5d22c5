#include "text/Characters.h"

namespace {

/// Takes the last dot-separated component off a text.
QStringView takeComponent(QStringView *text) {
  const qsizetype dot = text->lastIndexOf(u'.');
  const QStringView component = text->mid(dot + 1);
  *text = dot < 0 ? QStringView() : text->left(dot);
  return component;
}

qsizetype firstLength(QStringView word) {
  return word.size() > 1 && word[0].isHighSurrogate() ? 2 : 1;
}

}  // namespace

QString stringByDeletingCharactersInSet(const QString &text, const QString &set) {
  QString result = text;
  result.removeIf([&set](QChar unit) { return set.contains(unit); });
  return result;
}

QString capitalizedString(const QString &text) {
  QString result;
  qsizetype at = 0;
  while (at < text.size()) {
    qsizetype end = at;
    while (end < text.size() && !text[end].isSpace()) ++end;
    if (const QString word = text.mid(at, end - at); !word.isEmpty()) {
      const qsizetype first = firstLength(word);
      result += word.left(first).toUpper() + word.mid(first).toLower();
    }
    if (end < text.size()) result += text[end];
    at = end + 1;
  }
  return result;
}

QString capitalizedPhraseString(const QString &text) {
  return text.size() < 2 ? text : text.left(1).toUpper() + text.mid(1).toLower();
}

QString correctedCaseString(const QString &text) {
  return text == text.toLower() || text == text.toUpper() ? capitalizedString(text) : text;
}

int reversedCompare(const QString &text, const QString &other) {
  QStringView mine = text, theirs = other;
  bool mineLeft = !mine.isEmpty(), theirsLeft = !theirs.isEmpty();
  while (mineLeft && theirsLeft) {
    mineLeft = mine.contains(u'.');
    theirsLeft = theirs.contains(u'.');
    const QStringView a = takeComponent(&mine), b = takeComponent(&theirs);
    for (qsizetype i = 0; i < qMin(a.size(), b.size()); ++i) {
      if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
    }
  }
  return mineLeft ? -1 : 1;
}
