#pragma once

#include "keeper/script/BlockParser.h"
#include "keeper/script/CommandParser.h"
#include "keeper/script/DeclarationParser.h"
#include "keeper/script/ElementParser.h"
#include "keeper/script/OperationParser.h"
#include "keeper/script/ReferenceParser.h"
#include "keeper/script/ScriptCursor.h"
#include "keeper/script/ScriptTerms.h"
#include "keeper/script/StatementParser.h"

/// One text on its way to a tree: the cursor, and the parsers of the parts of the grammar, which call each
/// other. One thread.
struct ScriptParsing {
  ScriptParsing(const QString &source, const ScriptDictionaryLookup &lookup);

  /// A node over what was taken since a place. Throws -2706 if the tree below it goes too deep.
  scriptTree::ExpressionPtr make(qsizetype start, scriptTree::Expression::Form form);
  /// Sets a child of a node that is made already.
  void adopt(scriptTree::Expression &parent, scriptTree::ExpressionPtr &slot,
             scriptTree::ExpressionPtr child);
  /// True if a value can begin at the cursor.
  bool atValue();
  /// Takes a name that is nobody's term, in the form in which names are compared.
  QString takeName(const QString &expected);

  ScriptCursor cursor;
  ScriptTerms terms;
  OperationParser operations;
  ReferenceParser references;
  ElementParser elements;
  CommandParser commands;
  StatementParser statements;
  BlockParser blocks;
  DeclarationParser declarations;

  /// Throws -2706 if the tree below the node goes too deep.
  void checkHeight(const scriptTree::Expression &node) const;
};
