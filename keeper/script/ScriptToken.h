#pragma once

#include <QString>
#include <cstring>

#include "keeper/script/ScriptError.h"

/// A word, sign or literal of a script text.
struct ScriptToken {
  enum class Kind {
    Word,        ///< text: in lower case; "isn't" and "doesn't" are one word
    Name,        ///< text: what stood between bars
    Text,        ///< text: its value
    Integer,     ///< integer
    Real,        ///< real
    Ordinal,     ///< integer: 2 for `2nd`
    Code,        ///< text: what stood between guillemets
    Symbol,      ///< symbol; `<=`, `>=` and `/=` are ≤, ≥ and ≠
    Possessive,  ///< `'s`
    LineEnd,
    End
  };

  Kind kind = Kind::End;
  SourceRange range;
  QString text;
  qint64 integer = 0;
  double real = 0.0;
  char16_t symbol = 0;
  /// A word of the language's grammar, which names nothing.
  bool reserved = false;
  /// Of a word: as WordFilter counts it.
  quint32 hash = 0;

  bool is(Kind kind_) const { return kind == kind_; }
  bool isWord(QStringView word) const { return kind == Kind::Word && text == word; }
  /// The same for a literal: nearly every other word differs in its length already.
  template <size_t kUnits>
  bool isWord(const char16_t (&word)[kUnits]) const {
    return kind == Kind::Word && text.size() == qsizetype(kUnits - 1) &&
           std::memcmp(text.constData(), word, (kUnits - 1) * sizeof(char16_t)) == 0;
  }
  bool isSymbol(char16_t sign) const { return kind == Kind::Symbol && symbol == sign; }
  bool endsStatement() const { return kind == Kind::LineEnd || kind == Kind::End; }
};
