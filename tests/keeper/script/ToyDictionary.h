#pragma once

#include "keeper/script/ScriptParser.h"

/// A music application's words, as many as the tests of the language speak of.
namespace toyDictionary {
/// Known as "Music" and "com.example.music".
ScriptDictionaryLookup lookup();
}  // namespace toyDictionary
