#include "keeper/script/ScriptParsing.h"

#include <algorithm>

using namespace scriptTree;

namespace {

/// The height of the tallest child of a node.
struct TallestChild {
  static int of(const ExpressionPtr &child) { return child ? child->height : 0; }
  template <typename... Children>
  static int of(const ExpressionPtr &child, const Children &...others) {
    return std::max(of(child), of(others...));
  }
  static int of(const Expressions &children) {
    int tallest = 0;
    for (const ExpressionPtr &child : children) tallest = std::max(tallest, child->height);
    return tallest;
  }
  static int of(const std::vector<std::pair<QString, ExpressionPtr>> &children) {
    int tallest = 0;
    for (const auto &[label, child] : children) tallest = std::max(tallest, child->height);
    return tallest;
  }

  int operator()(const Literal &) const { return 0; }
  int operator()(const Variable &) const { return 0; }
  int operator()(const Special &) const { return 0; }
  int operator()(const List &node) const { return of(node.items); }
  int operator()(const Record &node) const { return of(node.fields); }
  int operator()(const Operation &node) const {
    int tallest = of(node.first);
    for (const Operation::Link &link : node.links) tallest = std::max(tallest, of(link.operand));
    return tallest;
  }
  int operator()(const Property &node) const { return of(node.container); }
  int operator()(const Element &node) const { return of(node.key, node.upTo, node.container, node.test); }
  int operator()(const Insertion &node) const { return of(node.anchor); }
  int operator()(const Application &node) const { return of(node.name); }
  int operator()(const Builtin &node) const { return of(node.arguments); }
  int operator()(const Command &node) const { return std::max(of(node.direct), of(node.parameters)); }
  int operator()(const HandlerCall &node) const { return std::max(of(node.target), of(node.arguments)); }
  /// The nodes with one operand.
  template <typename Node>
  int operator()(const Node &node) const {
    return of(node.operand);
  }
};

}  // namespace

ScriptParsing::ScriptParsing(const QString &source, const ScriptDictionaryLookup &lookup)
    : cursor(source),
      terms(cursor, lookup),
      operations(*this),
      references(*this),
      elements(*this),
      commands(*this),
      statements(*this),
      blocks(*this),
      declarations(*this) {}

ExpressionPtr ScriptParsing::make(qsizetype start, Expression::Form form) {
  auto node = std::make_unique<Expression>();
  node->range = cursor.since(start);
  node->form = std::move(form);
  node->height = 1 + std::visit(TallestChild{}, node->form);
  checkHeight(*node);
  return node;
}

void ScriptParsing::adopt(Expression &parent, ExpressionPtr &slot, ExpressionPtr child) {
  parent.height = std::max(parent.height, 1 + child->height);
  slot = std::move(child);
  checkHeight(parent);
}

void ScriptParsing::checkHeight(const Expression &node) const {
  if (node.height <= ScriptParser::kDeepest) return;
  throw ScriptError{scriptErrors::kStackOverflow, QStringLiteral("The script is nested too deeply."),
                    node.range};
}

bool ScriptParsing::atValue() {
  const ScriptToken &token = cursor.peek();
  if (token.is(ScriptToken::Kind::Symbol)) return QStringView(u"({-+").contains(QChar(token.symbol));
  if (token.kind > ScriptToken::Kind::Symbol || terms.label() > 0) return false;
  if (!token.reserved) return true;
  for (const char16_t *word :
       {u"it",    u"me",     u"my",    u"its",   u"every",   u"some",   u"first", u"second",
        u"third", u"fourth", u"fifth", u"sixth", u"seventh", u"eighth", u"ninth", u"tenth",
        u"last",  u"middle", u"true",  u"false", u"not",     u"get",    u"count", u"exists"}) {
    if (token.text == QStringView(word)) return true;
  }
  return false;
}

QString ScriptParsing::takeName(const QString &expected) {
  const ScriptToken &token = cursor.peek();
  const bool barred = token.is(ScriptToken::Kind::Name);
  const bool free = token.is(ScriptToken::Kind::Word) && !token.reserved &&
                    terms.at().kind == ScriptTerms::Term::Kind::None;
  if (!barred && !free) cursor.failExpected(expected);
  return cursor.take().text;
}
