#pragma once

#include "keeper/script/ScriptTree.h"

struct ScriptParsing;

/// Parses the statements that hold others, each from its first word to its `end`. Throws ScriptError. One
/// thread.
class BlockParser {
 public:
  explicit BlockParser(ScriptParsing &parsing) : all(parsing) {}

  /// True if such a statement is next.
  bool isNext();
  scriptTree::Statement::Form statement();

 private:
  scriptTree::Statement::Form tell();
  scriptTree::Statement::Form usingTerms();
  scriptTree::Statement::Form conditional();
  scriptTree::Statement::Form attempt();
  scriptTree::Statement::Form withTimeout();
  scriptTree::Statement::Form considering();
  scriptTree::Statement::Form repeat();
  void repeatHead(scriptTree::Repeat &repeat);
  void repeatWith(scriptTree::Repeat &repeat);
  QStringList attributes();
  scriptTree::Block line();

  ScriptParsing &all;
};
