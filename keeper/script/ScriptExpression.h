#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

#include "keeper/script/ScriptError.h"
#include "keeper/script/ScriptValue.h"

/// The tree of a script text. Words of a dictionary, names of variables, handlers, fields and labels are in
/// lower case, words parted by one blank; a name in bars keeps its case. Nothing here changes after parsing.
namespace scriptTree {

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;
using Expressions = std::vector<ExpressionPtr>;

/// A number, text, boolean, `missing value`, constant ("monday", "null", "«constant ****kNon»") or class name
/// ("text", "user playlist", "«class isot»"; `string` and `Unicode text` are "text"). «data utxt…» is a text.
struct Literal {
  ScriptValue value;
};

struct Variable {
  QString name;
};

/// `it`: the target of the innermost `tell`, in a `whose` test the tested thing; `me`: the script; `result`:
/// what the last statement gave; `AppleScript`: the language itself, which holds the text item delimiters.
struct Special {
  enum class Word { It, Me, Result, Language };
  Word word;
};

/// `{a, b}`; as the target of a `set`, a pattern.
struct List {
  Expressions items;
};

struct Record {
  std::vector<std::pair<QString, ExpressionPtr>> fields;
};

struct Unary {
  enum class Operator { Negate, Plus, Not };
  Operator op;
  ExpressionPtr operand;
};

enum class Operator {
  Power,
  Multiply,
  Divide,
  IntegerDivide,
  Modulo,
  Add,
  Subtract,
  Concatenate,
  Less,
  LessOrEqual,
  Greater,
  GreaterOrEqual,
  Equal,
  NotEqual,
  Contains,
  DoesNotContain,
  StartsWith,
  EndsWith,
  IsIn,
  IsNotIn,
  And,
  Or
};

/// Operators of one level of precedence with their operands, to be worked from left to right:
/// `first op operand op operand …`. `and` and `or` stop at the first operand that decides. Powers and
/// comparisons have one link each.
struct Operation {
  struct Link {
    Operator op;
    ExpressionPtr operand;
  };
  ExpressionPtr first;
  std::vector<Link> links;
};

/// `operand as type`, by the type's term.
struct Coercion {
  ExpressionPtr operand;
  QString type;
};

/// A property, or a field of a record, of its container: `name of p`, `rest of L`, `POSIX path of f`. Without
/// a container it belongs to `it`.
struct Property {
  QString term;
  ExpressionPtr container;
};

/// Elements of one class in a container: of `it` without one. `characters`, `words`, `paragraphs`, `items`,
/// `text items` of texts and lists are elements too, and "text" with a range is a stretch of a text.
struct Element {
  /// Key: an index if the value is a number, else a name. Ordinal: from 1, or -1 for the last.
  enum class Selector { Every, Key, Index, Name, Id, Ordinal, Middle, Some, Range };
  /// The singular: "user playlist".
  QString className;
  Selector selector = Selector::Every;
  qint64 ordinal = 0;
  /// For Key, Index, Name, Id, and the first of a range.
  ExpressionPtr key;
  /// The last of a range.
  ExpressionPtr upTo;
  ExpressionPtr container;
  /// The `whose` test, for each element of the container before the selector picks; null if there is none.
  ExpressionPtr test;
};

/// A place in a list or container: `end of L`, `beginning of P`, `before track 1`. `anchor` may be null for
/// `end` and `beginning`: then it is that of `it`.
struct Insertion {
  enum class Place { Beginning, End, Before, After };
  Place place;
  ExpressionPtr anchor;
};

/// `a reference to X`: stays unresolved.
struct ReferenceTo {
  ExpressionPtr operand;
};

/// `application "name"`, `application id "identifier"`.
struct Application {
  ExpressionPtr name;
  bool isIdentifier = false;
};

/// `get X`: the value of a reference.
struct Get {
  ExpressionPtr operand;
};

/// `count of X`, `count X`, `number of X`; with a class, `count each track of X`.
struct Count {
  ExpressionPtr operand;
  QString each;
};

/// `exists X`, `X exists`.
struct Exists {
  ExpressionPtr operand;
};

/// What the language itself can do; the arguments in this order.
struct Builtin {
  enum class Function {
    CurrentDate,
    Delay,      ///< seconds; none is 1
    Offset,     ///< of this text, in that
    PosixFile,  ///< path
    File,       ///< `file X`: text in the host's notation, or a file
    Alias,      ///< `alias X`
    Round,  ///< number, and perhaps a text literal: "up", "down", "toward zero", "to nearest", "as taught in
            ///< school"
    LoadScript,  ///< file
    RunScript,   ///< text or file
    TimeToGmt,
    CharacterId,  ///< code point or list of them
    StringId,     ///< the same
    Log,          ///< value
  };
  Function function;
  Expressions arguments;
};

/// A command of the application: sent to `it`.
struct Command {
  /// The dictionary's term. `activate`, `launch`, `quit`, `run` and `reopen` are known without a dictionary.
  QString verb;
  /// Null if nothing stands behind the verb.
  ExpressionPtr direct;
  /// By the term of their label; `with once` is true, `without once` false.
  std::vector<std::pair<QString, ExpressionPtr>> parameters;
};

/// `f(a, b)`, `f(a) of S`, `S's f(a)`, `my f(a)`. Without a target it goes to `it`.
struct HandlerCall {
  QString name;
  Expressions arguments;
  ExpressionPtr target;
};

struct Expression {
  using Form =
      std::variant<Literal, Variable, Special, List, Record, Unary, Operation, Coercion, Property, Element,
                   Insertion, ReferenceTo, Application, Get, Count, Exists, Builtin, Command, HandlerCall>;
  SourceRange range;
  Form form;
  /// How many levels the tree has from here down; bounded, so that walking it recursively is safe.
  int height = 1;
};

}  // namespace scriptTree
