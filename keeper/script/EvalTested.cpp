#include "keeper/script/EvalTested.h"

#include <algorithm>

using namespace scriptTree;

namespace {

bool depends(const ExpressionPtr &expression) {
  return expression && evalTested::dependsOnIt(*expression);
}

/// One operation for each form of an expression.
struct Dependence {
  bool operator()(const Literal &) const { return false; }
  bool operator()(const Variable &) const { return false; }
  bool operator()(const Special &special) const { return special.word == Special::Word::It; }
  bool operator()(const List &list) const {
    return std::any_of(list.items.begin(), list.items.end(), depends);
  }
  bool operator()(const Record &record) const {
    return std::any_of(record.fields.begin(), record.fields.end(),
                       [](const auto &field) { return depends(field.second); });
  }
  bool operator()(const Unary &unary) const { return depends(unary.operand); }
  bool operator()(const Operation &operation) const {
    return depends(operation.first) ||
           std::any_of(operation.links.begin(), operation.links.end(),
                       [](const Operation::Link &link) { return depends(link.operand); });
  }
  bool operator()(const Coercion &coercion) const { return depends(coercion.operand); }
  bool operator()(const Property &property) const {
    return !property.container || depends(property.container);
  }
  bool operator()(const Element &element) const {
    return !element.container || depends(element.container) || depends(element.key) || depends(element.upTo);
  }
  bool operator()(const Insertion &) const { return true; }
  bool operator()(const ReferenceTo &reference) const { return depends(reference.operand); }
  bool operator()(const Application &) const { return false; }
  bool operator()(const Get &get) const { return depends(get.operand); }
  bool operator()(const Count &count) const { return depends(count.operand); }
  bool operator()(const Exists &exists) const { return depends(exists.operand); }
  bool operator()(const Builtin &builtin) const {
    return std::any_of(builtin.arguments.begin(), builtin.arguments.end(), depends);
  }
  bool operator()(const Command &) const { return true; }
  bool operator()(const HandlerCall &call) const {
    return !call.target || depends(call.target) ||
           std::any_of(call.arguments.begin(), call.arguments.end(), depends);
  }
};

}  // namespace

bool evalTested::isIt(const Expression &expression) {
  const auto *special = std::get_if<Special>(&expression.form);
  return special && special->word == Special::Word::It;
}

bool evalTested::dependsOnIt(const Expression &expression) {
  return std::visit(Dependence{}, expression.form);
}
