#pragma once

#include <QSet>

#include "keeper/script/ScriptTree.h"

struct ScriptParsing;

/// Parses statements that stand in one line, blocks of statements, and what ends both. Throws ScriptError.
/// One thread.
class StatementParser {
 public:
  explicit StatementParser(ScriptParsing &parsing) : all(parsing) {}

  /// One statement without its line end.
  scriptTree::Statement statement();
  /// The rest of the line, then statements up to an `end`, an `else` or an `on`, which stays untaken.
  scriptTree::Block block();
  /// Throws unless the line or the script ends here; takes the line end.
  void expectLineEnd();
  /// `end`, and perhaps the words of what it ends.
  void expectEnd(const QString &words);
  /// What follows `on error` or `error`: as a pattern only names and literals.
  scriptTree::ErrorParts errorParts(bool pattern);

  /// What holds inside one handler or script: set anew by whoever begins one.
  struct Frame {
    int repeats = 0;
    QSet<QString> locals;
    QSet<QString> globals;
  };
  Frame frame;

 private:
  scriptTree::Statement::Form form();
  scriptTree::Statement::Form set();
  scriptTree::Statement::Form copy();
  scriptTree::Statement::Form giveBack();
  scriptTree::Statement::Form exitRepeat();
  scriptTree::Statement::Form declare(bool global);
  scriptTree::ExpressionPtr target();
  scriptTree::ExpressionPtr errorPart(bool pattern);

  ScriptParsing &all;
};
