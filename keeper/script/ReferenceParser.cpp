#include "keeper/script/ReferenceParser.h"

#include <algorithm>

#include "keeper/script/ScriptParsing.h"

using namespace scriptTree;

ExpressionPtr ReferenceParser::reference() {
  const qsizetype start = all.cursor.start();
  Chain chain = links();
  if (all.cursor.atWord(u"whose") || all.cursor.atWord(u"where")) {
    Expression *tested = chain.filterable ? chain.filterable : chain.keyed;
    if (!tested) all.cursor.failAfter();
    all.cursor.take();
    ExpressionPtr test = all.operations.expression();
    const int testHeight = test->height;
    all.adopt(*tested, std::get<Element>(tested->form).test, std::move(test));
    tested->range = all.cursor.since(tested->range.start);
    chain.node->range = all.cursor.since(chain.node->range.start);
    // The element may lie deep in the chain: the sum is never less than the height.
    if (chain.node.get() != tested) chain.node->height += testHeight;
    all.checkHeight(*chain.node);
  }
  if (!all.cursor.takeWord(u"exists")) return std::move(chain.node);
  return all.make(start, Exists{std::move(chain.node)});
}

/// A value, what it owns (`'s`), and what owns it (`of`).
ReferenceParser::Chain ReferenceParser::links() {
  const qsizetype start = all.cursor.start();
  Chain chain = primary();
  while (all.cursor.peek().is(ScriptToken::Kind::Possessive)) {
    all.cursor.take();
    Chain owner = std::move(chain);
    chain = attach(member(), std::move(owner), start);
  }
  const bool of = all.cursor.atWord(u"of") || (!inEndsChain && all.cursor.atWord(u"in"));
  if (!of || !chain.open) return chain;
  all.cursor.take();
  const ScriptCursor::Level level(all.cursor);
  return attach(std::move(chain), links(), start);
}

/// Puts a member into its container.
ReferenceParser::Chain ReferenceParser::attach(Chain chain, Chain container, qsizetype start) {
  if (!chain.open) all.cursor.failExpected(QStringLiteral("which one of its class"));
  Expression &node = *chain.node;
  ExpressionPtr &owner = container.node;
  if (const Variable *variable = std::get_if<Variable>(&node.form)) {
    node.form = Property{variable->name, nullptr};
  } else if (std::holds_alternative<Literal>(node.form)) {
    // The one class name that stands for its element: `text of s`.
    Element text;
    text.className = QStringLiteral("text");
    node.form = std::move(text);
  }
  if (Property *property = std::get_if<Property>(&node.form)) {
    all.adopt(node, property->container, std::move(owner));
  } else if (Element *element = std::get_if<Element>(&node.form)) {
    all.adopt(node, element->container, std::move(owner));
  } else if (Insertion *insertion = std::get_if<Insertion>(&node.form)) {
    all.adopt(node, insertion->anchor, std::move(owner));
  } else {
    all.adopt(node, std::get<HandlerCall>(node.form).target, std::move(owner));
  }
  node.range = all.cursor.since(start);
  if (!chain.filterable) chain.filterable = container.filterable;
  if (!chain.keyed) chain.keyed = container.keyed;
  chain.open = false;
  return chain;
}

ReferenceParser::Chain ReferenceParser::primary() {
  const ScriptToken &token = all.cursor.peek();
  switch (token.kind) {
    case ScriptToken::Kind::Text:
      return literal(token.text);
    case ScriptToken::Kind::Integer:
      return literal(token.integer);
    case ScriptToken::Kind::Real:
      return literal(token.real);
    case ScriptToken::Kind::Code:
      return code();
    case ScriptToken::Kind::Ordinal:
      return all.elements.ordinal();
    case ScriptToken::Kind::Name:
      return name();
    case ScriptToken::Kind::Word:
      return token.reserved ? reservedWord() : word();
    case ScriptToken::Kind::Symbol:
      if (token.symbol == u'(') return {all.operations.inBrackets()};
      if (token.symbol == u'{') return {all.operations.inBraces()};
      break;
    default:
      break;
  }
  all.cursor.failExpected(QStringLiteral("expression"));
}

ReferenceParser::Chain ReferenceParser::reservedWord() {
  if (all.elements.isOrdinal()) return all.elements.ordinal();
  ScriptCursor &cursor = all.cursor;
  if (cursor.atWord(u"it")) return special(Special::Word::It);
  if (cursor.atWord(u"me")) return special(Special::Word::Me);
  if (cursor.atWord(u"my")) return owned(Special::Word::Me);
  if (cursor.atWord(u"its")) return owned(Special::Word::It);
  if (cursor.atWord(u"get")) return {all.commands.get()};
  if (cursor.atWord(u"count")) return {all.commands.count()};
  if (cursor.atWord(u"exists")) return {all.commands.exists()};
  if (cursor.atWord(u"beginning")) return insertion(Insertion::Place::Beginning);
  if (cursor.atWord(u"end")) return insertion(Insertion::Place::End);
  if (cursor.atWord(u"before")) return insertion(Insertion::Place::Before);
  if (cursor.atWord(u"after")) return insertion(Insertion::Place::After);
  const ScriptTerms::Term &term = all.terms.at();
  if (term.kind != ScriptTerms::Term::Kind::Value) cursor.failExpected(QStringLiteral("expression"));
  return literal(term.value);
}

ReferenceParser::Chain ReferenceParser::word() {
  ScriptCursor &cursor = all.cursor;
  const bool reference = cursor.peek(1).isWord(u"reference") || cursor.peek(1).isWord(u"ref");
  if (cursor.atWord(u"a") && reference && cursor.peek(2).isWord(u"to")) return referenceTo();
  if (cursor.atWord(u"application") || cursor.atWord(u"app")) return application();
  if (cursor.atWord(u"applescript")) return special(Special::Word::Language);
  if (cursor.atWord(u"result")) return special(Special::Word::Result);
  if (cursor.atWord(u"number") && cursor.peek(1).isWord(u"of")) return {all.commands.numberOf()};
  const ScriptTerms::Term &term = all.terms.at();
  switch (term.kind) {
    case ScriptTerms::Term::Kind::Value:
      return literal(term.value);
    case ScriptTerms::Term::Kind::Function:
      return {all.commands.function()};
    case ScriptTerms::Term::Kind::Verb:
      return {all.commands.command()};
    default:
      return member();
  }
}

/// What can belong to something: an element, a property, a name, a handler's call.
ReferenceParser::Chain ReferenceParser::member() {
  if (all.elements.isOrdinal()) return all.elements.ordinal();
  const qsizetype start = all.cursor.start();
  const ScriptTerms::Term &term = all.terms.at();
  switch (term.kind) {
    case ScriptTerms::Term::Kind::Class:
    case ScriptTerms::Term::Kind::Plural:
      return all.elements.classTerm();
    case ScriptTerms::Term::Kind::Property: {
      if (term.alsoClass && all.elements.atKey(term.words)) return all.elements.classTerm();
      Property property{term.meaning, nullptr};
      all.cursor.skip(term.words);
      return {all.make(start, std::move(property)), true};
    }
    default:
      return name();
  }
}

ReferenceParser::Chain ReferenceParser::name() {
  const qsizetype start = all.cursor.start();
  if (all.cursor.peek(1).isSymbol(u'(')) return {all.commands.handlerCall(), true};
  Variable variable{all.takeName(QStringLiteral("name"))};
  return {all.make(start, std::move(variable)), true};
}

ReferenceParser::Chain ReferenceParser::owned(Special::Word owner) {
  const qsizetype start = all.cursor.start();
  Chain container = special(owner);
  return attach(member(), std::move(container), start);
}

ReferenceParser::Chain ReferenceParser::insertion(Insertion::Place place) {
  const qsizetype start = all.cursor.start();
  all.cursor.take();
  const bool beside = place == Insertion::Place::Before || place == Insertion::Place::After;
  if (!beside) return {all.make(start, Insertion{place, nullptr}), true};
  const ScriptCursor::Level level(all.cursor);
  return {all.make(start, Insertion{place, chain()})};
}

ReferenceParser::Chain ReferenceParser::application() {
  const qsizetype start = all.cursor.start();
  all.cursor.take();
  const bool identifier = all.cursor.takeWord(u"id");
  const bool named =
      all.cursor.peek().is(ScriptToken::Kind::Text) || all.cursor.atSymbol(u'(') || all.elements.atKey(0);
  if (named) return {all.make(start, Application{all.elements.key(false), identifier})};
  if (identifier) all.cursor.failExpected(QStringLiteral("text"));
  return {all.make(start, Literal{ScriptClassName{QStringLiteral("application")}})};
}

ReferenceParser::Chain ReferenceParser::referenceTo() {
  const qsizetype start = all.cursor.start();
  all.cursor.skip(3);
  const ScriptCursor::Level level(all.cursor);
  return {all.make(start, ReferenceTo{reference()})};
}

ReferenceParser::Chain ReferenceParser::literal(const ScriptValue &value) {
  const qsizetype start = all.cursor.start();
  Literal literal{value};
  all.cursor.skip(std::max(1, all.terms.at().words));
  return {all.make(start, std::move(literal))};
}

ReferenceParser::Chain ReferenceParser::special(Special::Word word) {
  const qsizetype start = all.cursor.start();
  all.cursor.take();
  return {all.make(start, Special{word})};
}

/// What stands between guillemets: a word for what it is, and a code that says which.
ReferenceParser::Chain ReferenceParser::code() {
  const qsizetype start = all.cursor.start();
  const QString text = all.cursor.peek().text;
  const QString spelled = u'«' + text + u'»';
  const qsizetype blank = text.indexOf(u' ');
  const QStringView kind = QStringView(text).first(std::max<qsizetype>(blank, 0));
  const QStringView code = QStringView(text).sliced(blank + 1);
  const auto is = [&](QStringView word, qsizetype length) { return kind == word && code.size() == length; };
  if (is(u"event", 8)) return {all.commands.codedCommand(spelled)};
  Expression::Form form;
  bool open = false;
  if (is(u"class", 4)) {
    form = Literal{ScriptClassName{ScriptLanguage::classOfCode(code.toString())}};
  } else if (is(u"property", 4)) {
    form = Property{spelled, nullptr};
    open = true;
  } else if (is(u"constant", 8)) {
    form = Literal{ScriptConstant{spelled}};
  } else if (kind == u"data" && code.startsWith(u"utxt") && code.size() % 4 == 0) {
    form = Literal{textOfHexadecimal(code.sliced(4))};
  } else {
    all.cursor.failExpected(QStringLiteral("expression"));
  }
  all.cursor.take();
  return {all.make(start, std::move(form)), open};
}

/// The text whose units are given by four digits each, the high one first; the count is a multiple of four.
QString ReferenceParser::textOfHexadecimal(QStringView digits) {
  QString text;
  text.reserve(digits.size() / 4);
  for (qsizetype at = 0; at < digits.size(); at += 4) {
    const QStringView four = digits.sliced(at, 4);
    for (const QChar digit : four) {
      if (!QStringView(u"0123456789abcdefABCDEF").contains(digit)) {
        all.cursor.failExpected(QStringLiteral("hexadecimal digits"));
      }
    }
    text += QChar(char16_t(four.toUShort(nullptr, 16)));
  }
  return text;
}
