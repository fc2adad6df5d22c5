#pragma once

#include "keeper/script/ReferenceParser.h"

struct ScriptParsing;

/// Parses what picks elements of a class: `every track`, `track id 77`, `last item`, `text 1 thru 3`. Throws
/// ScriptError. One thread.
class ElementParser {
 public:
  explicit ElementParser(ScriptParsing &parsing) : all(parsing) {}

  /// True before `every`, `some`, `first`, `2nd` and their like.
  bool isOrdinal();
  /// The element at such a word.
  ReferenceParser::Chain ordinal();
  /// At the term of a class: its element if a key follows, all of them for a plural, else the class' name.
  ReferenceParser::Chain classTerm();
  /// True if the token so many ahead can begin the key of an element.
  bool atKey(int ahead);
  /// A key; `end` and `beginning` too where it ends a range.
  scriptTree::ExpressionPtr key(bool endsRange);

 private:
  bool takeSelectorWord(scriptTree::Element::Selector &selector);
  ReferenceParser::Chain keyed(scriptTree::Element element, qsizetype start);

  ScriptParsing &all;
};
