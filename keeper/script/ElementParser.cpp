#include "keeper/script/ElementParser.h"

#include <QSet>
#include <algorithm>

#include "keeper/script/ScriptParsing.h"

using namespace scriptTree;

namespace {

using Selector = Element::Selector;

struct OrdinalWord {
  Selector selector = Selector::Ordinal;
  qint64 ordinal = 0;
  int words = 1;
};

ScriptTermTable<OrdinalWord> makeOrdinalWords() {
  ScriptTermTable<OrdinalWord> all;
  all[QStringLiteral("every")].selector = Selector::Every;
  all[QStringLiteral("some")].selector = Selector::Some;
  all[QStringLiteral("middle")].selector = Selector::Middle;
  all[QStringLiteral("last")].ordinal = -1;
  all[QStringLiteral("back")].ordinal = -1;
  all[QStringLiteral("front")].ordinal = 1;
  const QString counted = QStringLiteral("first second third fourth fifth sixth seventh eighth ninth tenth");
  qint64 ordinal = 0;
  for (const QString &word : counted.split(u' ')) all[word].ordinal = ++ordinal;
  return all;
}

/// Null for a token that is none.
const OrdinalWord *ordinalWord(const ScriptToken &token) {
  static const ScriptTermTable<OrdinalWord> all = makeOrdinalWords();
  if (!token.is(ScriptToken::Kind::Word)) return nullptr;
  return all.longestTerm(token.text, token.hash, [](int, const QString &) { return false; });
}

/// Kinds of values, of which a list may hold some, but which no key picks: `date "…"` depends on the region
/// and is not known here.
bool takesKey(const QString &className) {
  static const QSet<QString> values = {QStringLiteral("integer"), QStringLiteral("real"),
                                       QStringLiteral("number"),  QStringLiteral("boolean"),
                                       QStringLiteral("list"),    QStringLiteral("record"),
                                       QStringLiteral("date"),    QStringLiteral("application")};
  return !values.contains(className);
}

}  // namespace

bool ElementParser::isOrdinal() {
  const ScriptToken &token = all.cursor.peek();
  if (token.is(ScriptToken::Kind::Ordinal)) return true;
  if (!ordinalWord(token)) return false;
  if (token.reserved) return true;
  // `front` and `back` are names as well, and begin terms: only a class behind them makes them ordinals.
  const ScriptToken &next = all.cursor.peek(1);
  return all.terms.at().kind == ScriptTerms::Term::Kind::None && next.is(ScriptToken::Kind::Word) &&
         !next.reserved;
}

ReferenceParser::Chain ElementParser::ordinal() {
  const qsizetype start = all.cursor.start();
  const ScriptToken token = all.cursor.take();
  Element element;
  if (token.is(ScriptToken::Kind::Ordinal)) {
    element.selector = Selector::Ordinal;
    element.ordinal = token.integer;
  } else {
    const OrdinalWord *word = ordinalWord(token);
    element.selector = word->selector;
    element.ordinal = word->ordinal;
  }
  if (!all.terms.atClass()) all.cursor.failExpected(QStringLiteral("class name"));
  const ScriptTerms::Term &term = all.terms.at();
  element.className = term.meaning;
  all.cursor.skip(term.words);
  ReferenceParser::Chain chain{all.make(start, std::move(element)), true};
  chain.filterable = chain.node.get();
  return chain;
}

ReferenceParser::Chain ElementParser::classTerm() {
  const qsizetype start = all.cursor.start();
  const ScriptTerms::Term term = all.terms.at();
  all.cursor.skip(term.words);
  Element element;
  element.className = term.meaning;
  const bool keyable = takesKey(term.meaning);
  if (keyable && (takeSelectorWord(element.selector) || atKey(0))) return keyed(std::move(element), start);
  if (term.kind != ScriptTerms::Term::Kind::Plural) {
    const bool text = term.meaning == u"text";
    return {all.make(start, Literal{ScriptClassName{term.meaning}}), text};
  }
  ReferenceParser::Chain chain{all.make(start, std::move(element)), true};
  chain.filterable = chain.node.get();
  return chain;
}

bool ElementParser::atKey(int ahead) {
  const ScriptToken &token = all.cursor.peek(ahead);
  switch (token.kind) {
    case ScriptToken::Kind::Text:
    case ScriptToken::Kind::Integer:
    case ScriptToken::Kind::Real:
    case ScriptToken::Kind::Name:
      return true;
    case ScriptToken::Kind::Symbol:
      return token.symbol == u'(' || token.symbol == u'-';
    case ScriptToken::Kind::Word:
      break;
    default:
      return false;
  }
  if (token.text == u"my" || token.text == u"its" || token.text == u"it") return true;
  // What the word means is known at the cursor; further ahead any word that is not the grammar's will do.
  if (token.reserved || ahead > 0) return !token.reserved;
  return all.terms.at().kind == ScriptTerms::Term::Kind::None && all.terms.label() == 0;
}

/// `id`, `index`, `named`, `name` before a key.
bool ElementParser::takeSelectorWord(Selector &selector) {
  const ScriptToken &token = all.cursor.peek();
  if (!token.is(ScriptToken::Kind::Word) || !atKey(1)) return false;
  if (token.text == u"id") {
    selector = Selector::Id;
  } else if (token.text == u"index") {
    selector = Selector::Index;
  } else if (token.text == u"named" || token.text == u"name") {
    selector = Selector::Name;
  } else {
    return false;
  }
  all.cursor.take();
  return true;
}

ReferenceParser::Chain ElementParser::keyed(Element element, qsizetype start) {
  if (element.selector == Selector::Every) element.selector = Selector::Key;
  element.key = key(false);
  const bool range = all.cursor.atWord(u"thru") || all.cursor.atWord(u"through");
  if (range && element.selector == Selector::Key) {
    all.cursor.take();
    element.selector = Selector::Range;
    element.upTo = key(true);
  }
  ReferenceParser::Chain chain{all.make(start, std::move(element)), true};
  chain.keyed = chain.node.get();
  return chain;
}

ExpressionPtr ElementParser::key(bool endsRange) {
  const ScriptCursor::Level level(all.cursor);
  const qsizetype start = all.cursor.start();
  if (all.cursor.takeSymbol(u'-')) return all.make(start, Unary{Unary::Operator::Negate, key(false)});
  const bool end = all.cursor.atWord(u"end");
  if (endsRange && (end || all.cursor.atWord(u"beginning"))) {
    all.cursor.take();
    return all.make(start, Literal{qint64(end ? -1 : 1)});
  }
  return all.references.primary().node;
}
