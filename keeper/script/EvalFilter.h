#pragma once

#include <memory>

#include "keeper/script/ScriptExpression.h"
#include "keeper/script/ScriptObject.h"
#include "keeper/script/ScriptRun.h"

/// The test of a `whose`, with everything in it that does not depend on the tested thing worked out once.
/// Texts are compared without regard to case, whatever the script considers, and missing values stand in no
/// order, as applications do. Made and used in one run.
class EvalFilter {
 public:
  static std::shared_ptr<const EvalFilter> make(ScriptRun &run, const scriptTree::Expression &test);

  /// The things of a class in a container that pass, in order: looked up by one of the parts joined with
  /// `and` if the container knows a short way for one, else all are walked, over columns if it has them.
  ScriptObjects apply(ScriptRun &run, ScriptObject &container, const QString &className) const;

 private:
  /// One side of a comparison: a value, a property of the tested thing, or an expression to be worked out
  /// with the thing as `it`.
  struct Operand {
    ScriptValue value;
    QString property;
    const scriptTree::Expression *expression = nullptr;
  };
  struct Node {
    enum class Kind { And, Or, Not, Compare, Truth };
    Kind kind = Kind::Truth;
    std::vector<Node> parts;
    scriptTree::Operator op = scriptTree::Operator::Equal;
    Operand left;
    Operand right;
  };
  /// Columns by property, while a container is walked.
  struct Row;
  using Columns = std::vector<std::pair<QString, ScriptListItems>>;

  static Node nodeOf(ScriptRun &run, const scriptTree::Expression &expression);
  static Operand operandOf(ScriptRun &run, const scriptTree::Expression &expression);
  static bool holds(ScriptRun &run, const Node &node, const Row &row);
  static ScriptValue valueOf(ScriptRun &run, const Operand &operand, const Row &row);
  static bool collectProperties(const Node &node, QStringList &properties);
  static std::optional<ScriptObjects> lookedUp(ScriptObject &container, const QString &className,
                                               const Node &part);
  std::optional<ScriptObjects> walkColumns(ScriptRun &run, ScriptObject &container,
                                           const QString &className) const;

  Node root;
};
