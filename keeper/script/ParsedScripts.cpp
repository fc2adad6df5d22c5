#include "keeper/script/ParsedScripts.h"

ParsedScripts::ParsedScripts(ScriptDictionaryLookup dictionaries_) : dictionaries(std::move(dictionaries_)) {}

ParsedScriptPtr ParsedScripts::parsed(const QString &source) {
  {
    const std::lock_guard lock(mutex);
    if (ParsedScriptPtr known = kept(source)) return known;
  }
  const ParsedScriptPtr made = ScriptParser::parse(source, dictionaries);
  const std::lock_guard lock(mutex);
  // Another thread may have been faster; then everybody shares its tree.
  if (ParsedScriptPtr known = kept(source)) return known;
  keep(made);
  return made;
}

ParsedScriptPtr ParsedScripts::kept(const QString &source) {
  const auto place = places.constFind(source);
  if (place == places.cend()) return nullptr;
  scripts.splice(scripts.begin(), scripts, *place);
  return scripts.front();
}

void ParsedScripts::keep(const ParsedScriptPtr &script) {
  if (script->source.size() > kMostUnits) return;
  scripts.push_front(script);
  places.insert(script->source, scripts.begin());
  units += script->source.size();
  while (scripts.size() > kMost || units > kMostUnits) {
    units -= scripts.back()->source.size();
    places.remove(scripts.back()->source);
    scripts.pop_back();
  }
}
