#include "keeper/script/OperationParser.h"

#include <algorithm>

#include "keeper/script/ScriptParsing.h"

using namespace scriptTree;

namespace {

using Level = OperationParser::Level;

struct FoundOperator {
  Operator op = Operator::Equal;
  Level level = Level::Equality;
  /// How many tokens it takes.
  int words = 1;
};

using Spellings = ScriptTermTable<FoundOperator>;

void add(Spellings &spellings, Operator op, Level level, const QString &commaParted) {
  for (const QString &spelling : commaParted.split(u',')) {
    FoundOperator &entry = spellings[spelling];
    entry.op = op;
    entry.level = level;
  }
}

/// `less` and `greater` with what the other words around them turn them into.
void addOrders(Spellings &spellings) {
  const Level level = Level::Order;
  add(spellings, Operator::Less, level,
      QStringLiteral("is less than,less than,comes before,is not greater than or equal to,"
                     "isn't greater than or equal to"));
  add(spellings, Operator::LessOrEqual, level,
      QStringLiteral("is less than or equal to,less than or equal to,is not greater than,isn't greater than,"
                     "does not come after,doesn't come after"));
  add(spellings, Operator::Greater, level,
      QStringLiteral("is greater than,greater than,comes after,is not less than or equal to,"
                     "isn't less than or equal to"));
  add(spellings, Operator::GreaterOrEqual, level,
      QStringLiteral("is greater than or equal to,greater than or equal to,is not less than,isn't less than,"
                     "does not come before,doesn't come before"));
}

Spellings allSpellings() {
  Spellings spellings;
  addOrders(spellings);
  const Level level = Level::Equality;
  add(spellings, Operator::Equal, level, QStringLiteral("is,equals,equal,equal to,is equal to,is equal"));
  add(spellings, Operator::NotEqual, level,
      QStringLiteral("is not,isn't,is not equal to,isn't equal to,is not equal,isn't equal,does not equal,"
                     "doesn't equal"));
  add(spellings, Operator::Contains, level, QStringLiteral("contains,contain"));
  add(spellings, Operator::DoesNotContain, level, QStringLiteral("does not contain,doesn't contain"));
  add(spellings, Operator::StartsWith, level,
      QStringLiteral("starts with,start with,begins with,begin with"));
  add(spellings, Operator::EndsWith, level, QStringLiteral("ends with,end with"));
  add(spellings, Operator::IsIn, level, QStringLiteral("is in,is contained by"));
  add(spellings, Operator::IsNotIn, level,
      QStringLiteral("is not in,isn't in,is not contained by,isn't contained by"));
  add(spellings, Operator::And, Level::And, QStringLiteral("and"));
  add(spellings, Operator::Or, Level::Or, QStringLiteral("or"));
  add(spellings, Operator::IntegerDivide, Level::Product, QStringLiteral("div"));
  add(spellings, Operator::Modulo, Level::Product, QStringLiteral("mod"));
  return spellings;
}

std::optional<FoundOperator> operatorInSigns(char16_t sign) {
  switch (sign) {
    case u'^':
      return FoundOperator{Operator::Power, Level::Power, 1};
    case u'*':
      return FoundOperator{Operator::Multiply, Level::Product, 1};
    case u'/':
    case u'÷':
      return FoundOperator{Operator::Divide, Level::Product, 1};
    case u'+':
      return FoundOperator{Operator::Add, Level::Sum, 1};
    case u'-':
      return FoundOperator{Operator::Subtract, Level::Sum, 1};
    case u'&':
      return FoundOperator{Operator::Concatenate, Level::Concatenation, 1};
    case u'<':
      return FoundOperator{Operator::Less, Level::Order, 1};
    case u'≤':
      return FoundOperator{Operator::LessOrEqual, Level::Order, 1};
    case u'>':
      return FoundOperator{Operator::Greater, Level::Order, 1};
    case u'≥':
      return FoundOperator{Operator::GreaterOrEqual, Level::Order, 1};
    case u'=':
      return FoundOperator{Operator::Equal, Level::Equality, 1};
    case u'≠':
      return FoundOperator{Operator::NotEqual, Level::Equality, 1};
    default:
      return {};
  }
}

std::optional<FoundOperator> operatorAt(ScriptCursor &cursor) {
  const ScriptToken &first = cursor.peek();
  if (first.is(ScriptToken::Kind::Symbol)) return operatorInSigns(first.symbol);
  if (!first.is(ScriptToken::Kind::Word)) return {};
  if (first.isWord(u"as")) return FoundOperator{Operator::Equal, Level::As, 1};
  static const Spellings spellings = allSpellings();
  const auto isWord = [&](int ahead, const QString &word) { return cursor.peek(ahead).isWord(word); };
  const FoundOperator *found = spellings.longestTerm(first.text, first.hash, isWord);
  return found ? std::optional(*found) : std::nullopt;
}

}  // namespace

ExpressionPtr OperationParser::expression(Level loosest) {
  const ScriptCursor::Level level(all.cursor);
  const qsizetype start = all.cursor.start();
  ExpressionPtr left = prefixed(loosest);
  // The level of the comparison that has just ended; none is at Or.
  Level compared = Level::Or;
  while (const std::optional<FoundOperator> found = operatorAt(all.cursor)) {
    if (found->level < loosest) break;
    // Comparisons do not chain.
    if (compared != Level::Or && compared == found->level) all.cursor.failAfter();
    all.cursor.skip(found->words);
    if (found->level == Level::As) {
      left = coercion(std::move(left), start);
    } else if (!takeRunning(left, found->op, start)) {
      left = link(std::move(left), found->level, found->op, start);
    }
    const bool comparison = found->level == Level::Equality || found->level == Level::Order;
    compared = comparison ? found->level : Level::Or;
  }
  return left;
}

ExpressionPtr OperationParser::prefixed(Level loosest) {
  const qsizetype start = all.cursor.start();
  const bool negated = all.cursor.atWord(u"not");
  const bool minus = all.cursor.atSymbol(u'-');
  if (!negated && !minus && !all.cursor.atSymbol(u'+')) return all.references.reference();
  if (negated && loosest > Level::Not) all.cursor.failExpected(QStringLiteral("expression"));
  all.cursor.take();
  if (negated) return all.make(start, Unary{Unary::Operator::Not, expression(Level::Not)});
  const ScriptCursor::Level level(all.cursor);
  const Unary::Operator op = minus ? Unary::Operator::Negate : Unary::Operator::Plus;
  return all.make(start, Unary{op, prefixed(Level::Power)});
}

ExpressionPtr OperationParser::link(ExpressionPtr left, Level level, Operator op, qsizetype start) {
  Operation operation{std::move(left), {}};
  const bool rightFirst = level == Level::Power;
  const bool many = level != Level::Equality && level != Level::Order && !rightFirst;
  while (true) {
    ExpressionPtr operand = expression(rightFirst ? level : Level(int(level) + 1));
    operation.links.push_back({op, std::move(operand)});
    const std::optional<FoundOperator> next = many ? operatorAt(all.cursor) : std::nullopt;
    if (!next || next->level != level) break;
    all.cursor.skip(next->words);
    op = next->op;
  }
  return all.make(start, std::move(operation));
}

ExpressionPtr OperationParser::coercion(ExpressionPtr operand, qsizetype start) {
  const ScriptTerms::Term &term = all.terms.at();
  const bool file = term.kind == ScriptTerms::Term::Kind::Function &&
                    (term.function == Builtin::Function::PosixFile ||
                     term.function == Builtin::Function::File || term.function == Builtin::Function::Alias);
  QString type;
  if (all.cursor.peek().is(ScriptToken::Kind::Code) && all.cursor.peek().text.startsWith(u"class ")) {
    type = ScriptLanguage::classOfCode(all.cursor.take().text.sliced(6));
  } else if (term.kind == ScriptTerms::Term::Kind::Class || file) {
    type = term.meaning;
    all.cursor.skip(term.words);
  } else {
    all.cursor.failExpected(QStringLiteral("class name"));
  }
  return all.make(start, Coercion{std::move(operand), type});
}

/// `application "X" is running` asks for a property, it compares nothing.
bool OperationParser::takeRunning(ExpressionPtr &left, Operator op, qsizetype start) {
  const bool equality = op == Operator::Equal || op == Operator::NotEqual;
  if (!equality || !all.cursor.atWord(u"running") || !std::holds_alternative<Application>(left->form)) {
    return false;
  }
  all.cursor.take();
  left = all.make(start, Property{QStringLiteral("running"), std::move(left)});
  if (op == Operator::NotEqual) left = all.make(start, Unary{Unary::Operator::Not, std::move(left)});
  return true;
}

ExpressionPtr OperationParser::inBrackets() {
  const qsizetype start = all.cursor.start();
  const ScriptTerms::Parameters none(all.terms, nullptr);
  const bool outside = std::exchange(all.references.inEndsChain, false);
  all.cursor.expectSymbol(u'(');
  ExpressionPtr inside = expression();
  all.cursor.expectSymbol(u')');
  all.references.inEndsChain = outside;
  inside->range = all.cursor.since(start);
  return inside;
}

ExpressionPtr OperationParser::inBraces() {
  const qsizetype start = all.cursor.start();
  const ScriptTerms::Parameters none(all.terms, nullptr);
  const bool outside = std::exchange(all.references.inEndsChain, false);
  all.cursor.expectSymbol(u'{');
  ExpressionPtr made;
  if (labelLength() > 0) {
    made = record(start);
  } else {
    List list;
    while (!all.cursor.atSymbol(u'}')) {
      list.items.push_back(expression());
      if (!all.cursor.takeSymbol(u',')) break;
      if (all.cursor.atSymbol(u'}')) all.cursor.failExpected(QStringLiteral("expression"));
    }
    all.cursor.expectSymbol(u'}');
    made = all.make(start, std::move(list));
  }
  all.references.inEndsChain = outside;
  return made;
}

ExpressionPtr OperationParser::record(qsizetype start) {
  Record fields;
  do {
    const int length = labelLength();
    if (length == 0) all.cursor.failExpected(QStringLiteral("label"));
    const ScriptTerms::Term &term = all.terms.at();
    const bool known = term.kind != ScriptTerms::Term::Kind::None;
    const QString label = known ? term.meaning : all.cursor.peek().text;
    all.cursor.skip(length + 1);
    fields.fields.emplace_back(label, expression());
  } while (all.cursor.takeSymbol(u','));
  all.cursor.expectSymbol(u'}');
  return all.make(start, std::move(fields));
}

/// How many tokens a record's label before a colon takes; 0 if there is none.
int OperationParser::labelLength() {
  const ScriptToken &token = all.cursor.peek();
  const bool name = token.is(ScriptToken::Kind::Name);
  if (!name && (!token.is(ScriptToken::Kind::Word) || token.reserved)) return 0;
  const int length = name ? 1 : std::max(1, all.terms.at().words);
  return all.cursor.peek(length).isSymbol(u':') ? length : 0;
}
