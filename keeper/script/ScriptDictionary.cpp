#include "keeper/script/ScriptDictionary.h"

#include <algorithm>

void ScriptDictionary::add(const QString &term, Kind kind, const QString &meaning) {
  const int words = int(term.count(u' ')) + 1;
  longest = std::max(longest, words);
  int &fromFirst = longestFrom[term.section(u' ', 0, 0)];
  fromFirst = std::max(fromFirst, words);
  Term &known = terms[term];
  const bool shadowed = known.kind == Kind::Property && kind != Kind::Property;
  if (!shadowed) known = {kind, meaning, words};
}

void ScriptDictionary::addClass(const ScriptClass &scriptClass) {
  classes.insert(scriptClass.term, scriptClass);
  add(scriptClass.term, Kind::Class, scriptClass.term);
  add(scriptClass.plural, Kind::Plural, scriptClass.term);
}

void ScriptDictionary::addProperty(const QString &term) {
  add(term, Kind::Property, term);
}

void ScriptDictionary::addSynonym(const QString &term, const QString &meaning) {
  add(term, Kind::Property, meaning);
}

void ScriptDictionary::addConstant(const QString &term) {
  add(term, Kind::Constant, term);
}

void ScriptDictionary::addVerb(const ScriptVerb &scriptVerb) {
  verbs.insert(scriptVerb.term, scriptVerb);
  add(scriptVerb.term, Kind::Verb, scriptVerb.term);
}

ScriptDictionary::Term ScriptDictionary::longestTerm(const QStringList &words) const {
  if (words.isEmpty()) return {};
  const int most = longestFrom.value(words.first());
  for (qsizetype count = std::min<qsizetype>(most, words.size()); count > 0; --count) {
    const auto found = terms.constFind(count == 1 ? words.first() : words.first(count).join(u' '));
    if (found != terms.cend()) return *found;
  }
  return {};
}

const ScriptVerb *ScriptDictionary::verb(const QString &term) const {
  const auto found = verbs.constFind(term);
  return found == verbs.cend() ? nullptr : &*found;
}

bool ScriptDictionary::isKindOf(const QString &term, const QString &ancestor) const {
  for (QString at = term; !at.isEmpty(); at = classes.value(at).parent) {
    if (at == ancestor) return true;
  }
  return false;
}
