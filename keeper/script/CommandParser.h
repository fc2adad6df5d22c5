#pragma once

#include "keeper/script/ScriptExpression.h"
#include "keeper/script/ScriptTerms.h"

struct ScriptParsing;

/// Parses commands: those of the dictionary with their labelled parameters, and what the language itself can
/// do. Each begins at its first word. Throws ScriptError. One thread.
class CommandParser {
 public:
  explicit CommandParser(ScriptParsing &parsing) : all(parsing) {}

  /// `duplicate trk to pl`, at a term that is a verb.
  scriptTree::ExpressionPtr command();
  /// At a code between guillemets: «event hookPlay».
  scriptTree::ExpressionPtr codedCommand(const QString &code);
  /// At a term that is a function.
  scriptTree::ExpressionPtr function();
  scriptTree::ExpressionPtr get();
  scriptTree::ExpressionPtr count();
  scriptTree::ExpressionPtr numberOf();
  scriptTree::ExpressionPtr exists();
  scriptTree::ExpressionPtr handlerCall();

 private:
  void parameters(scriptTree::Command &command);
  void booleanParameters(scriptTree::Command &command);
  void addParameter(scriptTree::Command &command, const QString &label, scriptTree::ExpressionPtr value);
  scriptTree::Expressions arguments(scriptTree::Builtin::Function function);
  scriptTree::ExpressionPtr rounding();

  ScriptParsing &all;
};
