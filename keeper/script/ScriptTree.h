#pragma once

#include <memory>

#include "keeper/script/ScriptExpression.h"

namespace scriptTree {

struct Statement;
using Block = std::vector<Statement>;
struct Script;

/// A statement that is only an expression: a command, a handler's call, `get X`, a value. It gives `result`.
struct Evaluate {
  ExpressionPtr expression;
};

/// `set target to value`. Targets are a Variable, Property, Element, Insertion, or a List or Record of
/// targets.
struct Set {
  ExpressionPtr target;
  ExpressionPtr value;
};

/// `copy value to target`, with the same targets.
struct Copy {
  ExpressionPtr value;
  ExpressionPtr target;
};

/// `return value`; null for none.
struct Return {
  ExpressionPtr value;
};

struct If {
  struct Branch {
    ExpressionPtr condition;
    Block body;
  };
  std::vector<Branch> branches;
  Block otherwise;
};

struct Repeat {
  enum class Kind {
    Forever,
    Times,  ///< first: the count
    While,  ///< first: the condition
    Until,  ///< first: the condition
    With,   ///< variable from first to last by step; step may be null
    In      ///< variable in first
  };
  Kind kind = Kind::Forever;
  QString variable;
  ExpressionPtr first;
  ExpressionPtr last;
  ExpressionPtr step;
  Block body;
};

/// `exit repeat`; always inside a Repeat of the same handler.
struct ExitRepeat {};

/// `tell target … end tell`, also in one line.
struct Tell {
  ExpressionPtr target;
  Block body;
};

/// `using terms from … end using terms from`: matters to the parser alone.
struct UsingTerms {
  Block body;
};

/// What accompanies an error; any may be null. In `error` they are values; message is what follows the word.
/// In `on error` each is a Variable to fill or a Literal that the error must equal, else it passes on.
struct ErrorParts {
  ExpressionPtr message;
  ExpressionPtr number;
  ExpressionPtr from;
  ExpressionPtr partialResult;
  ExpressionPtr to;
};

struct Try {
  Block body;
  /// False without an `on error` part: then errors are swallowed.
  bool hasHandler = false;
  ErrorParts caught;
  Block handler;
};

/// `error message number n …`.
struct Raise {
  ErrorParts parts;
};

/// `global a, b` and `local a, b`.
struct Declare {
  bool isGlobal = false;
  QStringList names;
};

struct WithTimeout {
  ExpressionPtr seconds;
  Block body;
};

/// `considering case and hyphens but ignoring white space`: attributes by their words ("case",
/// "diacriticals", "hyphens", "punctuation", "white space").
struct Considering {
  QStringList considered;
  QStringList ignored;
  Block body;
};

/// `script S … end script` inside a handler: makes a fresh object each time it is reached.
struct DefineScript {
  QString name;
  std::unique_ptr<Script> script;
};

struct Statement {
  using Form = std::variant<Evaluate, Set, Copy, Return, If, Repeat, ExitRepeat, Tell, UsingTerms, Try, Raise,
                            Declare, WithTimeout, Considering, DefineScript>;
  /// From its first word to the end of its last line.
  SourceRange range;
  Form form;
};

struct Handler {
  QString name;
  QStringList parameters;
  /// `on run argv`: the one parameter takes the whole list of arguments.
  bool takesList = false;
  Block body;
  /// Of its first line.
  SourceRange range;
};

/// A whole text, or a script object: its declarations, and the statements that are its implicit `run`
/// handler. It has either such statements or a handler "run".
struct Script {
  /// `property p : value`, in order; evaluated once when the script is loaded.
  std::vector<std::pair<QString, ExpressionPtr>> properties;
  std::vector<Handler> handlers;
  /// Script objects beside the handlers, in order; made when the script is loaded.
  std::vector<DefineScript> scripts;
  Block statements;
};

}  // namespace scriptTree

/// A script text with its tree. Immutable once it is made: any thread, and many at once.
struct ParsedScript {
  QString source;
  scriptTree::Script script;

  /// The text of a node as it was written.
  QString textAt(const SourceRange &range) const { return source.mid(range.start, range.length); }
};

using ParsedScriptPtr = std::shared_ptr<const ParsedScript>;
