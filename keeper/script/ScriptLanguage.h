#pragma once

#include "keeper/script/ScriptExpression.h"
#include "keeper/script/ScriptTermTable.h"

/// The words that the language knows everywhere, without any dictionary.
namespace ScriptLanguage {

struct Term {
  enum class Kind { None, Class, Plural, Property, Value, Function, Verb };
  Kind kind = Kind::None;
  /// The class' singular, the property or the command.
  QString meaning;
  /// How many words of the text it takes.
  int words = 0;
  /// Of a Value: `missing value`, `tab`, `monday`.
  ScriptValue value;
  scriptTree::Builtin::Function function = scriptTree::Builtin::Function::Log;
};

/// All of them. Any thread.
const ScriptTermTable<Term> &table();

/// The class of a code between guillemets: "text" for utxt, else its own spelling, «class isot».
QString classOfCode(const QString &code);

}  // namespace ScriptLanguage
