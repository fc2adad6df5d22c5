#include "keeper/script/ScriptDictionary.h"

void ScriptDictionary::add(const QString &term, Kind kind, const QString &meaning) {
  Term &known = terms[term];
  const bool shadowed = known.kind == Kind::Property && kind != Kind::Property;
  if (!shadowed) {
    known.kind = kind;
    known.meaning = meaning;
  }
  known.alsoClass = classes.contains(term);
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
  const auto isWord = [&](qsizetype i, const QString &word) { return i < words.size() && words[i] == word; };
  const Term *found = terms.longestTerm(words.first(), WordFilter::hashOf(words.first()), isWord);
  return found ? *found : Term{};
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
