#pragma once

#include "keeper/script/ScriptExpression.h"

struct ScriptParsing;

/// Parses values without operators: literals, names, properties and elements, and their chains of `of` and
/// `'s` with `whose` tests. Throws ScriptError. One thread.
class ReferenceParser {
 public:
  explicit ReferenceParser(ScriptParsing &parsing) : all(parsing) {}

  /// A chain with its `whose` test and a trailing `exists`.
  scriptTree::ExpressionPtr reference();
  /// A chain alone: `name of track 1 of P`.
  scriptTree::ExpressionPtr chain() { return links().node; }
  /// While it is set, `in` ends a chain: `offset of a in b`.
  bool inEndsChain = false;

  /// A value, and what may still be done to it.
  struct Chain {
    scriptTree::ExpressionPtr node;
    /// True if a container may still come: not in brackets, not owned.
    bool open = false;
    /// The leftmost set or ordinal: what a `whose` test belongs to.
    scriptTree::Expression *filterable = nullptr;
    /// The leftmost element picked by a key, which a test belongs to where there is no set or ordinal.
    scriptTree::Expression *keyed = nullptr;
  };
  /// One value of a chain.
  Chain primary();

 private:
  Chain links();
  Chain word();
  Chain reservedWord();
  Chain member();
  Chain name();
  Chain owned(scriptTree::Special::Word owner);
  Chain attach(Chain chain, Chain container, qsizetype start);

  Chain literal(const ScriptValue &value);
  Chain special(scriptTree::Special::Word word);
  Chain insertion(scriptTree::Insertion::Place place);
  Chain application();
  Chain referenceTo();
  Chain code();
  QString textOfHexadecimal(QStringView digits);

  ScriptParsing &all;
};
