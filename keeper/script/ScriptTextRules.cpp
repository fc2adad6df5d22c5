#include "keeper/script/ScriptTextRules.h"

#include <algorithm>

namespace {

bool isAscii(const QString &text) {
  return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80; });
}

bool isHyphen(QChar unit) {
  return unit.category() == QChar::Punctuation_Dash;
}

}  // namespace

bool ScriptTextRules::onlyCase() const {
  return !ignoringDiacriticals && !ignoringWhiteSpace && !ignoringHyphens && !ignoringPunctuation;
}

QString ScriptTextRules::key(const QString &text) const {
  QString key = text;
  if (ignoringDiacriticals) {
    key = key.normalized(QString::NormalizationForm_D);
    key.removeIf([](QChar unit) { return unit.isMark(); });
  } else if (!isAscii(key)) {
    key = key.normalized(QString::NormalizationForm_C);
  }
  if (ignoringWhiteSpace) key.removeIf([](QChar unit) { return unit.isSpace(); });
  if (ignoringHyphens) key.removeIf(isHyphen);
  if (ignoringPunctuation) key.removeIf([](QChar unit) { return unit.isPunct() && !isHyphen(unit); });
  return ignoringCase ? key.toCaseFolded() : key;
}

bool ScriptTextRules::areEqual(const QString &a, const QString &b) const {
  if (a == b) return true;
  if (onlyCase() && isAscii(a) && isAscii(b)) {
    return ignoringCase && a.compare(b, Qt::CaseInsensitive) == 0;
  }
  return key(a) == key(b);
}

int ScriptTextRules::compare(const QString &a, const QString &b) const {
  ScriptTextRules folding = *this;
  folding.ignoringCase = true;
  const int folded = folding.key(a).compare(folding.key(b));
  return folded != 0 || ignoringCase ? folded : key(a).compare(key(b));
}

void ScriptTextRules::setIgnoring(const QString &attribute, bool ignored) {
  const std::pair<QStringView, bool *> attributes[] = {{u"case", &ignoringCase},
                                                       {u"diacriticals", &ignoringDiacriticals},
                                                       {u"white space", &ignoringWhiteSpace},
                                                       {u"hyphens", &ignoringHyphens},
                                                       {u"punctuation", &ignoringPunctuation}};
  for (const auto &[name, rule] : attributes) {
    if (name == attribute) *rule = ignored;
  }
}
