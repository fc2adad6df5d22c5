#include "keeper/script/EvalExpressions.h"

#include "keeper/script/EvalBuiltins.h"
#include "keeper/script/EvalCommands.h"
#include "keeper/script/EvalHandlers.h"
#include "keeper/script/EvalReferences.h"
#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptOperators.h"

using namespace scriptTree;

namespace {

using evalExpressions::evaluate;
using evalExpressions::value;
using Type = ScriptValue::Type;

/// One operation for each form of an expression.
struct Evaluator {
  ScriptRun &run;
  const Expression &expression;

  ScriptValue operator()(const Literal &literal) const { return literal.value; }

  ScriptValue operator()(const Variable &variable) const {
    const ScriptValue *known = run.variable(variable.name);
    if (known && !known->is(Type::NoValue)) return *known;
    throw undefined(variable.name);
  }

  ScriptValue operator()(const Special &special) const {
    switch (special.word) {
      case Special::Word::It:
        return run.it;
      case Special::Word::Me:
        return run.frame->me;
      case Special::Word::Language:
        return evalReferences::language();
      case Special::Word::Result:
        if (run.frame->result.is(Type::NoValue)) throw undefined(QStringLiteral("result"));
        return run.frame->result;
    }
    return {};
  }

  ScriptValue operator()(const List &list) const {
    ScriptListItems items;
    items.reserve(list.items.size());
    for (const ExpressionPtr &item : list.items) items.push_back(given(*item));
    return run.heap.made(ScriptValue::list(std::move(items)));
  }

  ScriptValue operator()(const Record &record) const {
    ScriptRecordFields fields;
    for (const auto &[name, field] : record.fields) fields.emplace_back(name, given(*field));
    return run.heap.made(ScriptValue::record(std::move(fields)));
  }

  ScriptValue operator()(const Unary &unary) const {
    if (unary.op == Unary::Operator::Not) return !evalExpressions::condition(run, *unary.operand);
    const ScriptValue operand = value(run, *unary.operand);
    if (unary.op == Unary::Operator::Negate) return scriptOperators::negate(operand);
    return scriptCoercions::toNumber(operand);
  }

  ScriptValue operator()(const Operation &operation) const {
    const Operator first = operation.links.front().op;
    if (first == Operator::And || first == Operator::Or) return decided(operation, first == Operator::Or);
    ScriptValue left = evaluate(run, *operation.first);
    for (const Operation::Link &link : operation.links) {
      ScriptValue right = evaluate(run, *link.operand);
      if (link.op != Operator::Equal && link.op != Operator::NotEqual) {
        left = evalReferences::settled(run, std::move(left));
        right = evalReferences::settled(run, std::move(right));
      }
      demand(left);
      demand(right);
      left = scriptOperators::apply(link.op, left, right, run.rules);
      if (link.op == Operator::Concatenate) left = run.heap.made(std::move(left));
    }
    return left;
  }

  ScriptValue operator()(const Coercion &coercion) const {
    const ScriptValue operand = value(run, *coercion.operand);
    ScriptValue made = scriptCoercions::coerce(operand, coercion.type, run.rules);
    return made.type() == operand.type() ? made : run.heap.made(std::move(made));
  }

  ScriptValue operator()(const Property &) const { return evalReferences::get(run, expression); }
  ScriptValue operator()(const Element &) const { return evalReferences::get(run, expression); }
  ScriptValue operator()(const Insertion &) const { return evalExpressions::unresolved(run, expression); }

  ScriptValue operator()(const ReferenceTo &reference) const {
    return evalExpressions::unresolved(run, *reference.operand);
  }

  ScriptValue operator()(const Application &application) const {
    const QString name = evalExpressions::text(run, *application.name);
    ScriptApplication *named = run.applicationNamed(name);
    if (!named) {
      throw ScriptError{scriptErrors::kApplicationNotFound,
                        QStringLiteral("Application \"%1\" wasn't found.").arg(name),
                        {}};
    }
    return ScriptObjectPtr(ScriptObjectPtr(), named);
  }

  ScriptValue operator()(const Get &get) const {
    return evalReferences::settled(run, evaluate(run, *get.operand));
  }

  ScriptValue operator()(const Count &count) const {
    return evalReferences::count(run, evalExpressions::unresolved(run, *count.operand), count.each);
  }

  ScriptValue operator()(const Exists &exists) const { return evalReferences::exists(run, *exists.operand); }
  ScriptValue operator()(const Builtin &builtin) const { return evalBuiltins::call(run, builtin); }
  ScriptValue operator()(const Command &command) const { return evalCommands::send(run, command); }
  ScriptValue operator()(const HandlerCall &call) const { return evalHandlers::call(run, call); }

 private:
  static ScriptError undefined(const QString &name) {
    return {scriptErrors::kNotDefined, QStringLiteral("The variable %1 is not defined.").arg(name), {}};
  }

  static void demand(const ScriptValue &operand) {
    if (!operand.is(Type::NoValue)) return;
    throw ScriptError{scriptErrors::kNoResult,
                      QStringLiteral("No result was returned from some part of this expression."),
                      {}};
  }

  /// The value with references kept, as lists and records take it.
  ScriptValue given(const Expression &item) const {
    ScriptValue made = evaluate(run, item);
    demand(made);
    return made;
  }

  /// `and` and `or`: stops at the first operand that is `deciding`.
  bool decided(const Operation &operation, bool deciding) const {
    if (evalExpressions::condition(run, *operation.first) == deciding) return deciding;
    for (const Operation::Link &link : operation.links) {
      if (evalExpressions::condition(run, *link.operand) == deciding) return deciding;
    }
    return !deciding;
  }
};

/// Does what belongs to an expression: an error that names no place yet is there.
template <typename Work>
auto at(const Expression &expression, const Work &work) {
  try {
    return work();
  } catch (ScriptError &error) {
    if (error.range.length == 0) error.range = expression.range;
    throw;
  }
}

}  // namespace

ScriptValue evalExpressions::evaluate(ScriptRun &run, const Expression &expression) {
  return at(expression, [&] {
    run.step();
    return std::visit(Evaluator{run, expression}, expression.form);
  });
}

ScriptValue evalExpressions::value(ScriptRun &run, const Expression &expression) {
  ScriptValue made = evalReferences::settled(run, evaluate(run, expression));
  if (!made.is(Type::NoValue)) return made;
  throw ScriptError{scriptErrors::kNoResult,
                    QStringLiteral("No result was returned from some part of this expression."),
                    expression.range};
}

ScriptValue evalExpressions::unresolved(ScriptRun &run, const Expression &expression) {
  const bool isWay = std::holds_alternative<Property>(expression.form) ||
                     std::holds_alternative<Element>(expression.form) ||
                     std::holds_alternative<Insertion>(expression.form);
  if (!isWay) return evaluate(run, expression);
  return at(expression, [&]() -> ScriptValue {
    run.step();
    return std::make_shared<const ScriptReference>(evalReferences::specify(run, expression, true));
  });
}

bool evalExpressions::condition(ScriptRun &run, const Expression &expression) {
  return at(expression, [&] { return scriptCoercions::toBoolean(value(run, expression)); });
}

QString evalExpressions::text(ScriptRun &run, const Expression &expression) {
  return at(expression, [&] { return scriptCoercions::toText(value(run, expression), run.rules); });
}

double evalExpressions::real(ScriptRun &run, const Expression &expression) {
  return at(expression, [&] { return scriptCoercions::toReal(value(run, expression)); });
}
