#pragma once

#include <QString>
#include <deque>

#include "keeper/script/ScriptLexer.h"
#include "keeper/script/ScriptToken.h"

/// Walks over the tokens of a script, looks ahead, and words the errors of what does not fit. One thread.
class ScriptCursor {
 public:
  explicit ScriptCursor(const QString &source) : lexer(source) {}

  /// The next token, or the one so many behind it, which stays untaken. Throws what the lexer throws.
  const ScriptToken &peek() {
    if (!first) read();
    return first->token;
  }
  const ScriptToken &peek(int tokens) {
    if (!first) read();
    const Item *item = first;
    for (; tokens > 0; --tokens) {
      if (!item->next) read();
      item = item->next;
    }
    return item->token;
  }
  /// What is taken stays valid until another token is asked for.
  const ScriptToken &take();
  void skip(int tokens);

  template <typename Word>
  bool atWord(const Word &word) {
    return peek().isWord(word);
  }
  bool atSymbol(char16_t sign) { return peek().isSymbol(sign); }
  bool atEndOfStatement() { return peek().endsStatement(); }
  /// Takes the word if it is next.
  template <typename Word>
  bool takeWord(const Word &word) {
    if (!atWord(word)) return false;
    take();
    return true;
  }
  bool takeSymbol(char16_t sign);
  /// Takes the word; throws if another token is next.
  template <typename Word>
  void expectWord(const Word &word) {
    if (!takeWord(word)) failWord(word);
  }
  void expectSymbol(char16_t sign);

  /// Where the next token begins.
  qsizetype start() { return peek().range.start; }
  /// From there to the end of the last token taken.
  SourceRange since(qsizetype start) const { return {start, end - start}; }

  /// The next token does not fit: -2740 if it begins a value where one has just ended, else -2741.
  [[noreturn]] void fail(const QString &expected);
  /// Throws -2741 for the next token.
  [[noreturn]] void failExpected(const QString &expected);
  /// Throws -2740 for the next token.
  [[noreturn]] void failAfter();

  /// Counts one level of nesting for as long as it lives; throws -2706 beyond the deepest.
  class Level {
   public:
    explicit Level(ScriptCursor &cursor);
    ~Level() { --cursor.depth; }
    Level(const Level &) = delete;
    Level &operator=(const Level &) = delete;

   private:
    ScriptCursor &cursor;
  };

 private:
  /// Reads one token more from the text.
  void read();
  [[noreturn]] void failWord(QStringView expected);

  ScriptLexer lexer;
  /// What is read and not taken, as a list: its tokens keep their places while more are read.
  struct Item {
    ScriptToken token;
    Item *next = nullptr;
  };
  Item *first = nullptr;
  Item *last = nullptr;
  /// Items to be used again.
  Item *spare = nullptr;
  std::deque<Item> items;
  /// True if the last token taken can end a value.
  bool valueEnded = false;
  qsizetype end = 0;
  int depth = 0;
};
