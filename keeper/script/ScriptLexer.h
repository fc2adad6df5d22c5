#pragma once

#include <QString>

#include "keeper/script/ScriptToken.h"
#include "keeper/script/ScriptWords.h"

/// Cuts a script text into tokens, one at a time, so that a text costs no more memory than its tree.
/// Comments, blanks, continued line ends and the noise word `the` give no token. One thread.
class ScriptLexer {
 public:
  /// Holds on to the text, and passes over a byte-order mark at its front.
  explicit ScriptLexer(const QString &source);

  /// The next token; End for ever once the text is over. Throws ScriptError -2741 for characters that begin
  /// nothing, texts and comments without end, unknown escapes; -2702 for a number that no real can hold.
  ScriptToken next();

 private:
  ScriptToken any();
  void skipBlanks();
  void skipLine();
  void skipBlockComment();
  void skipContinuation();
  ScriptToken lineEnd();
  ScriptToken word();
  ScriptToken number();
  ScriptToken text();
  ScriptToken enclosed(ScriptToken::Kind kind, char16_t closing);
  ScriptToken symbol();

  char16_t at(qsizetype offset = 0) const {
    const qsizetype index = position + offset;
    return index < source.size() ? source.constData()[index].unicode() : u'\0';
  }
  bool isLineEnd() const { return at() == u'\n' || at() == u'\r'; }
  ScriptToken token(ScriptToken::Kind kind, qsizetype start) const;
  [[noreturn]] void fail(const QString &message, qsizetype start, qsizetype length) const;

  const QString source;
  ScriptWords words;
  qsizetype position = 0;
};
