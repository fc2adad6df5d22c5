#include "keeper/script/ScriptParser.h"

#include "keeper/script/ScriptParsing.h"

ParsedScriptPtr ScriptParser::parse(const QString &source, const ScriptDictionaryLookup &dictionaries) {
  ScriptParsing parsing(source, dictionaries);
  return std::make_shared<const ParsedScript>(ParsedScript{source, parsing.declarations.script(true)});
}
