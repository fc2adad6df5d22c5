#include "tests/keeper/script/ToyDictionary.h"

namespace {

ScriptDictionary make() {
  ScriptDictionary words;
  const auto each = [](const QString &texts, const auto &add) {
    for (const QString &text : texts.split(u',')) add(text);
  };
  each(QStringLiteral("track,file track,playlist,user playlist,library playlist,folder playlist,artwork"),
       [&](const QString &term) {
         words.addClass({term, term + u's', {}});
       });
  each(QStringLiteral(
           "name,artist,album,album artist,year,id,class,container,persistent ID,played count,played date,"
           "rating,rating kind,duration,smart,special kind,fixed indexing,location,properties,artwork"),
       [&](const QString &term) { words.addProperty(term.toLower()); });
  each(QStringLiteral("none,user,computed,folder"), [&](const QString &term) { words.addConstant(term); });
  each(QStringLiteral("refresh,delete,quit"), [&](const QString &term) { words.addVerb({term, {}}); });
  words.addVerb({QStringLiteral("duplicate"), {QStringLiteral("to")}});
  words.addVerb({QStringLiteral("add"), {QStringLiteral("to")}});
  words.addVerb({QStringLiteral("play"), {QStringLiteral("once")}});
  words.addVerb({QStringLiteral("next track"), {}});
  words.addVerb({QStringLiteral("search"), {QStringLiteral("for"), QStringLiteral("only")}});
  words.addVerb({QStringLiteral("make"),
                 {QStringLiteral("new"), QStringLiteral("at"), QStringLiteral("with properties")}});
  return words;
}

}  // namespace

ScriptDictionaryLookup toyDictionary::lookup() {
  return [](const QString &name) -> const ScriptDictionary * {
    static const ScriptDictionary words = make();
    return name == u"Music" || name == u"com.example.music" ? &words : nullptr;
  };
}
