#include "keeper/script/EvalFilter.h"

#include "keeper/script/EvalExpressions.h"
#include "keeper/script/EvalProperties.h"
#include "keeper/script/EvalTested.h"
#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptOperators.h"

using namespace scriptTree;
using Type = ScriptValue::Type;

/// The thing that is tested; in a walk over columns it is made only if its position alone will not do.
struct EvalFilter::Row {
  ScriptObjectPtr thing;
  const Columns *columns = nullptr;
  size_t index = 0;
};

std::shared_ptr<const EvalFilter> EvalFilter::make(ScriptRun &run, const Expression &test) {
  auto made = std::make_shared<EvalFilter>();
  made->root = nodeOf(run, test);
  return made;
}

EvalFilter::Node EvalFilter::nodeOf(ScriptRun &run, const Expression &expression) {
  Node node;
  if (const auto *unary = std::get_if<Unary>(&expression.form); unary && unary->op == Unary::Operator::Not) {
    node.kind = Node::Kind::Not;
    node.parts.push_back(nodeOf(run, *unary->operand));
    return node;
  }
  const auto *operation = std::get_if<Operation>(&expression.form);
  if (!operation || operation->links.front().op < Operator::Less) {
    node.left = operandOf(run, expression);
    return node;
  }
  const Operator op = operation->links.front().op;
  if (op == Operator::And || op == Operator::Or) {
    node.kind = op == Operator::And ? Node::Kind::And : Node::Kind::Or;
    node.parts.push_back(nodeOf(run, *operation->first));
    for (const Operation::Link &link : operation->links) node.parts.push_back(nodeOf(run, *link.operand));
    return node;
  }
  node.kind = Node::Kind::Compare;
  node.op = op;
  node.left = operandOf(run, *operation->first);
  node.right = operandOf(run, *operation->links.front().operand);
  return node;
}

EvalFilter::Operand EvalFilter::operandOf(ScriptRun &run, const Expression &expression) {
  Operand operand;
  const auto *property = std::get_if<Property>(&expression.form);
  const bool isOwn = property && (!property->container || evalTested::isIt(*property->container));
  if (isOwn) {
    operand.property = property->term;
  } else if (evalTested::dependsOnIt(expression)) {
    operand.expression = &expression;
  } else {
    operand.value = evalExpressions::value(run, expression);
  }
  return operand;
}

ScriptValue EvalFilter::valueOf(ScriptRun &run, const Operand &operand, const Row &row) {
  if (operand.expression) {
    const ScriptRestore<ScriptValue> restore(run.it);
    run.it = row.thing;
    return evalExpressions::value(run, *operand.expression);
  }
  if (operand.property.isEmpty()) return operand.value;
  if (!row.columns) return evalProperties::get(run, row.thing, operand.property);
  for (const auto &[property, values] : *row.columns) {
    if (property == operand.property) return values[row.index];
  }
  return {};
}

bool EvalFilter::holds(ScriptRun &run, const Node &node, const Row &row) {
  switch (node.kind) {
    case Node::Kind::And:
      for (const Node &part : node.parts) {
        if (!holds(run, part, row)) return false;
      }
      return true;
    case Node::Kind::Or:
      for (const Node &part : node.parts) {
        if (holds(run, part, row)) return true;
      }
      return false;
    case Node::Kind::Not:
      return !holds(run, node.parts.front(), row);
    case Node::Kind::Truth:
      return scriptCoercions::toBoolean(valueOf(run, node.left, row));
    case Node::Kind::Compare:
      break;
  }
  static const ScriptTextRules rules;
  const ScriptValue left = valueOf(run, node.left, row);
  const ScriptValue right = valueOf(run, node.right, row);
  // What has no date stands neither before nor behind one. The language would stop here, applications do not.
  const bool isOrder = node.op >= Operator::Less && node.op <= Operator::GreaterOrEqual;
  if (isOrder && (left.is(Type::Missing) || right.is(Type::Missing))) return false;
  return scriptOperators::apply(node.op, left, right, rules).boolean();
}

std::optional<ScriptObjects> EvalFilter::lookedUp(ScriptObject &container, const QString &className,
                                                  const Node &part) {
  if (part.kind == Node::Kind::Truth && !part.left.property.isEmpty()) {
    return container.elementsWhere(className, part.left.property, true);
  }
  if (part.kind != Node::Kind::Compare || part.op != Operator::Equal) return std::nullopt;
  const bool isTurned = part.left.property.isEmpty();
  const Operand &property = isTurned ? part.right : part.left;
  const Operand &value = isTurned ? part.left : part.right;
  if (property.property.isEmpty() || value.expression || !value.property.isEmpty()) return std::nullopt;
  return container.elementsWhere(className, property.property, value.value);
}

bool EvalFilter::collectProperties(const Node &node, QStringList &properties) {
  for (const Operand *operand : {&node.left, &node.right}) {
    if (operand->expression) return false;
    if (operand->property == u"class") return false;
    if (!operand->property.isEmpty() && !properties.contains(operand->property))
      properties += operand->property;
  }
  for (const Node &part : node.parts) {
    if (!collectProperties(part, properties)) return false;
  }
  return true;
}

std::optional<ScriptObjects> EvalFilter::walkColumns(ScriptRun &run, ScriptObject &container,
                                                     const QString &className) const {
  QStringList properties;
  if (!collectProperties(root, properties) || properties.isEmpty()) return std::nullopt;
  Columns columns;
  for (const QString &property : properties) {
    auto column = container.column(className, property);
    if (!column) return std::nullopt;
    if (!columns.empty() && column->size() != columns.front().second.size()) return std::nullopt;
    columns.emplace_back(property, std::move(*column));
  }
  ScriptObjects found;
  for (size_t index = 0; index < columns.front().second.size(); ++index) {
    run.step();
    if (!holds(run, root, {nullptr, &columns, index})) continue;
    if (ScriptObjectPtr thing = container.elementAt(className, qsizetype(index)))
      found.push_back(std::move(thing));
  }
  return found;
}

ScriptObjects EvalFilter::apply(ScriptRun &run, ScriptObject &container, const QString &className) const {
  std::optional<ScriptObjects> candidates = lookedUp(container, className, root);
  if (candidates) return std::move(*candidates);
  for (size_t i = 0; root.kind == Node::Kind::And && i < root.parts.size() && !candidates; ++i) {
    candidates = lookedUp(container, className, root.parts[i]);
  }
  if (!candidates) {
    if (auto found = walkColumns(run, container, className)) return std::move(*found);
    candidates = container.elements(className);
  }
  ScriptObjects found;
  for (const ScriptObjectPtr &thing : *candidates) {
    run.step();
    if (holds(run, root, {thing, nullptr, 0})) found.push_back(thing);
  }
  return found;
}
