#pragma once

#include <QString>
#include <functional>

#include "keeper/script/ScriptDictionary.h"
#include "keeper/script/ScriptTree.h"

/// The dictionary of an application by its name, or by its identifier; null if there is no such application.
/// Called on the thread that parses; what it answers outlives the parsing.
using ScriptDictionaryLookup = std::function<const ScriptDictionary *(const QString &nameOrIdentifier)>;

/// Makes trees of script texts.
namespace ScriptParser {

/// The deepest nesting of blocks and expressions.
constexpr int kDeepest = 512;

/// The tree of a text. Throws ScriptError: -2740 or -2741 with the range of the word that does not fit, -2706
/// for a text nested too deeply, the language's own numbers for names declared twice and an `exit` outside a
/// `repeat`. Words of an application's dictionary are known only inside a `tell application "…"` or `using
/// terms from` that names it with a text literal. Time grows with the text's length only. Any thread.
ParsedScriptPtr parse(const QString &source, const ScriptDictionaryLookup &dictionaries);

}  // namespace ScriptParser
