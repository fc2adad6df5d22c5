#pragma once

#include "keeper/script/ScriptExpression.h"

struct ScriptParsing;

/// Parses expressions: operators by their precedence, `as`, and brackets. Throws ScriptError. One thread.
class OperationParser {
 public:
  explicit OperationParser(ScriptParsing &parsing) : all(parsing) {}

  /// The levels of precedence, from the loosest.
  enum class Level { Or, And, Not, Equality, Order, As, Concatenation, Sum, Product, Power };

  /// An expression of operators that bind at least as tightly as the level's.
  scriptTree::ExpressionPtr expression(Level loosest = Level::Or);
  /// `( expression )`.
  scriptTree::ExpressionPtr inBrackets();
  /// `{ … }`: a list, or a record if its first item has a label.
  scriptTree::ExpressionPtr inBraces();

 private:
  scriptTree::ExpressionPtr prefixed(Level loosest);
  scriptTree::ExpressionPtr link(scriptTree::ExpressionPtr left, Level level, scriptTree::Operator op,
                                 qsizetype start);
  scriptTree::ExpressionPtr coercion(scriptTree::ExpressionPtr operand, qsizetype start);
  bool takeRunning(scriptTree::ExpressionPtr &left, scriptTree::Operator op, qsizetype start);
  scriptTree::ExpressionPtr record(qsizetype start);
  int labelLength();

  ScriptParsing &all;
};
