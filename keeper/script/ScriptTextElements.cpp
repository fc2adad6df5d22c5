#include "keeper/script/ScriptTextElements.h"

#include <QTextBoundaryFinder>
#include <algorithm>

using scriptText::Stretch;

namespace {

/// The length of the character at a place.
qsizetype unitsAt(const QString &text, qsizetype at) {
  const bool pair = text.at(at).isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate();
  return pair ? 2 : 1;
}

/// Where the character of a number from 1, or from the end, begins; -1 if there is none.
qsizetype placeOf(const QString &text, qint64 number) {
  qsizetype at = 0;
  if (number > 0) {
    for (qint64 left = number - 1; left > 0 && at < text.size(); --left) at += unitsAt(text, at);
    return at < text.size() ? at : -1;
  }
  at = text.size();
  for (qint64 left = -number; left > 0; --left) {
    if (at == 0) return -1;
    const bool pair = at >= 2 && text.at(at - 1).isLowSurrogate() && text.at(at - 2).isHighSurrogate();
    at -= pair ? 2 : 1;
  }
  return number == 0 ? -1 : at;
}

std::vector<Stretch> characters(const QString &text) {
  std::vector<Stretch> found;
  found.reserve(size_t(text.size()));
  for (qsizetype at = 0; at < text.size(); at += found.back().length)
    found.push_back({at, unitsAt(text, at)});
  return found;
}

std::vector<Stretch> words(const QString &text) {
  std::vector<Stretch> found;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
  qsizetype start = -1;
  for (qsizetype at = 0; at != -1; at = finder.toNextBoundary()) {
    const QTextBoundaryFinder::BoundaryReasons reasons = finder.boundaryReasons();
    if (reasons.testFlag(QTextBoundaryFinder::EndOfItem) && start >= 0) found.push_back({start, at - start});
    start = reasons.testFlag(QTextBoundaryFinder::StartOfItem) ? at : -1;
  }
  return found;
}

std::vector<Stretch> paragraphs(const QString &text) {
  std::vector<Stretch> found;
  qsizetype start = 0;
  for (qsizetype at = 0; at < text.size(); ++at) {
    const QChar unit = text.at(at);
    if (unit != u'\n' && unit != u'\r') continue;
    found.push_back({start, at - start});
    if (unit == u'\r' && at + 1 < text.size() && text.at(at + 1) == u'\n') ++at;
    start = at + 1;
  }
  found.push_back({start, text.size() - start});
  return found;
}

Qt::CaseSensitivity caseOf(const ScriptTextRules &rules) {
  return rules.ignoringCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
}

/// Where each delimiter stands next; moves on only those that fell behind.
class DelimiterSearch {
 public:
  DelimiterSearch(const QString &text_, const ScriptTextRules &rules_) : text(text_), rules(rules_) {
    for (const QString &delimiter : rules.delimiters) {
      if (!delimiter.isEmpty()) ahead.push_back({-1, delimiter});
    }
  }

  bool isNeeded() const { return !ahead.empty(); }

  /// The first one from a place on, the longest where two begin together; of length 0 behind the last.
  Stretch next(qsizetype from) {
    Stretch best{text.size(), 0};
    for (auto &[place, delimiter] : ahead) {
      if (place < from) place = text.indexOf(delimiter, from, caseOf(rules));
      if (place < 0) place = text.size();
      const bool longer = place == best.start && delimiter.size() > best.length;
      if (place < text.size() && (place < best.start || longer)) best = {place, delimiter.size()};
    }
    return best;
  }

 private:
  const QString &text;
  const ScriptTextRules &rules;
  std::vector<std::pair<qsizetype, QString>> ahead;
};

std::vector<Stretch> textItems(const QString &text, const ScriptTextRules &rules) {
  DelimiterSearch search(text, rules);
  if (!search.isNeeded()) return characters(text);
  std::vector<Stretch> found;
  for (qsizetype start = 0;;) {
    const Stretch delimiter = search.next(start);
    found.push_back({start, delimiter.start - start});
    if (delimiter.length == 0) return found;
    start = delimiter.start + delimiter.length;
  }
}

}  // namespace

qsizetype scriptText::characterCount(const QString &text) {
  qsizetype count = 0;
  for (qsizetype at = 0; at < text.size(); at += unitsAt(text, at)) ++count;
  return count;
}

Stretch scriptText::characterStretch(const QString &text, qint64 from, qint64 to) {
  qsizetype first = placeOf(text, from);
  qsizetype last = placeOf(text, to);
  if (first < 0 || last < 0) return {0, -1};
  if (first > last) std::swap(first, last);
  return {first, last + unitsAt(text, last) - first};
}

std::vector<Stretch> scriptText::stretches(const QString &text, Element element,
                                           const ScriptTextRules &rules) {
  if (text.isEmpty()) return {};
  switch (element) {
    case Element::Character:
      return characters(text);
    case Element::Word:
      return words(text);
    case Element::Paragraph:
      return paragraphs(text);
    case Element::TextItem:
      return textItems(text, rules);
  }
  return {};
}

qint64 scriptText::offset(const QString &part, const QString &text, const ScriptTextRules &rules) {
  if (part.isEmpty()) return 0;
  const qsizetype at = text.indexOf(part, 0, caseOf(rules));
  return at < 0 ? 0 : characterCount(text.first(at)) + 1;
}

bool scriptText::contains(const QString &text, const QString &part, const ScriptTextRules &rules) {
  return rules.key(text).contains(rules.key(part));
}

bool scriptText::startsWith(const QString &text, const QString &part, const ScriptTextRules &rules) {
  return rules.key(text).startsWith(rules.key(part));
}

bool scriptText::endsWith(const QString &text, const QString &part, const ScriptTextRules &rules) {
  return rules.key(text).endsWith(rules.key(part));
}
