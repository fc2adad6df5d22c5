#include "keeper/script/BlockParser.h"

#include <QSet>

#include "keeper/script/ScriptParsing.h"

using namespace scriptTree;

namespace {

/// The application at the far end of a chain, `playlist 1 of application "X"`; null if there is none.
const Application *applicationOf(const Expression &node) {
  const Expression *at = &node;
  while (at) {
    if (const Application *application = std::get_if<Application>(&at->form)) return application;
    if (const Property *property = std::get_if<Property>(&at->form)) {
      at = property->container.get();
    } else if (const Element *element = std::get_if<Element>(&at->form)) {
      at = element->container.get();
    } else {
      at = nullptr;
    }
  }
  return nullptr;
}

}  // namespace

bool BlockParser::isNext() {
  const ScriptToken &token = all.cursor.peek();
  return token.isWord(u"tell") || token.isWord(u"if") || token.isWord(u"repeat") || token.isWord(u"try") ||
         token.isWord(u"using") || token.isWord(u"with") || token.isWord(u"considering") ||
         token.isWord(u"ignoring");
}

Statement::Form BlockParser::statement() {
  ScriptCursor &cursor = all.cursor;
  if (cursor.takeWord(u"tell")) return tell();
  if (cursor.takeWord(u"if")) return conditional();
  if (cursor.takeWord(u"repeat")) return repeat();
  if (cursor.takeWord(u"try")) return attempt();
  if (cursor.takeWord(u"using")) return usingTerms();
  if (cursor.takeWord(u"with")) return withTimeout();
  return considering();
}

Statement::Form BlockParser::tell() {
  Tell tell;
  tell.target = all.operations.expression();
  const ScriptDictionary *dictionary = all.terms.dictionary();
  if (const Application *application = applicationOf(*tell.target)) {
    const Literal *name = std::get_if<Literal>(&application->name->form);
    const bool named = name && name->value.is(ScriptValue::Type::Text);
    dictionary = named ? all.terms.dictionaryOf(name->value.text()) : nullptr;
  }
  const ScriptTerms::Scope scope(all.terms, dictionary);
  if (all.cursor.takeWord(u"to")) {
    tell.body = line();
    return tell;
  }
  tell.body = all.statements.block();
  all.statements.expectEnd(QStringLiteral("tell"));
  return tell;
}

Statement::Form BlockParser::usingTerms() {
  const ScriptTerms::Scope scope(all.terms, all.declarations.termsSource());
  UsingTerms terms{all.statements.block()};
  all.statements.expectEnd(QStringLiteral("using terms from"));
  return terms;
}

Statement::Form BlockParser::conditional() {
  If made;
  ScriptCursor &cursor = all.cursor;
  bool oneLine = false;
  do {
    ExpressionPtr condition = all.operations.expression();
    cursor.expectWord(u"then");
    const bool first = made.branches.empty();
    if (first) oneLine = !cursor.atEndOfStatement();
    made.branches.push_back({std::move(condition), oneLine ? line() : all.statements.block()});
    if (!cursor.takeWord(u"else")) break;
    if (cursor.takeWord(u"if")) continue;
    made.otherwise = oneLine ? line() : all.statements.block();
    break;
  } while (true);
  if (!oneLine) all.statements.expectEnd(QStringLiteral("if"));
  return made;
}

Statement::Form BlockParser::attempt() {
  Try made;
  made.body = all.statements.block();
  ScriptCursor &cursor = all.cursor;
  if (cursor.atWord(u"on") && cursor.peek(1).isWord(u"error")) {
    cursor.skip(2);
    made.hasHandler = true;
    made.caught = all.statements.errorParts(true);
    made.handler = all.statements.block();
  }
  // Both spellings of the end are in use.
  const bool error = cursor.peek(1).isWord(u"error");
  all.statements.expectEnd(error ? QStringLiteral("error") : QStringLiteral("try"));
  return made;
}

Statement::Form BlockParser::withTimeout() {
  WithTimeout made;
  ScriptCursor &cursor = all.cursor;
  cursor.expectWord(u"timeout");
  cursor.takeWord(u"of");
  made.seconds = all.operations.expression();
  if (!cursor.takeWord(u"second")) cursor.expectWord(u"seconds");
  made.body = all.statements.block();
  all.statements.expectEnd(QStringLiteral("timeout"));
  return made;
}

Statement::Form BlockParser::considering() {
  Considering made;
  const qsizetype start = all.cursor.start();
  const bool ignoring = all.cursor.take().text == u"ignoring";
  const QString other = ignoring ? QStringLiteral("considering") : QStringLiteral("ignoring");
  (ignoring ? made.ignored : made.considered) = attributes();
  if (all.cursor.takeWord(u"but")) {
    all.cursor.expectWord(other);
    (ignoring ? made.considered : made.ignored) = attributes();
  }
  for (const QString &attribute : made.considered) {
    if (!made.ignored.contains(attribute)) continue;
    throw ScriptError{scriptErrors::kConsiderAndIgnore,
                      QStringLiteral("“%1” is considered and ignored at once.").arg(attribute),
                      all.cursor.since(start)};
  }
  made.body = all.statements.block();
  all.statements.expectEnd(ignoring ? QStringLiteral("ignoring") : QStringLiteral("considering"));
  return made;
}

/// `case, diacriticals and white space`.
QStringList BlockParser::attributes() {
  static const QSet<QString> known = {QStringLiteral("case"), QStringLiteral("diacriticals"),
                                      QStringLiteral("hyphens"), QStringLiteral("punctuation"),
                                      QStringLiteral("white space")};
  QStringList found;
  ScriptCursor &cursor = all.cursor;
  do {
    QString attribute = cursor.peek().is(ScriptToken::Kind::Word) ? cursor.peek().text : QString();
    int words = 1;
    if (!known.contains(attribute) && cursor.peek(1).is(ScriptToken::Kind::Word)) {
      attribute += u' ' + cursor.peek(1).text;
      words = 2;
    }
    if (!known.contains(attribute)) cursor.failExpected(QStringLiteral("what to consider or ignore"));
    cursor.skip(words);
    // Said once or twice is the same.
    if (!found.contains(attribute)) found.append(attribute);
    const bool comma = cursor.takeSymbol(u',');
    if (!cursor.takeWord(u"and") && !comma) break;
  } while (true);
  return found;
}

Statement::Form BlockParser::repeat() {
  Repeat made;
  repeatHead(made);
  ++all.statements.frame.repeats;
  made.body = all.statements.block();
  --all.statements.frame.repeats;
  all.statements.expectEnd(QStringLiteral("repeat"));
  return made;
}

void BlockParser::repeatHead(Repeat &repeat) {
  ScriptCursor &cursor = all.cursor;
  if (cursor.atEndOfStatement()) return;
  if (cursor.takeWord(u"with")) return repeatWith(repeat);
  if (cursor.takeWord(u"while")) {
    repeat.kind = Repeat::Kind::While;
  } else if (cursor.takeWord(u"until")) {
    repeat.kind = Repeat::Kind::Until;
  } else {
    repeat.kind = Repeat::Kind::Times;
  }
  repeat.first = all.operations.expression();
  if (repeat.kind == Repeat::Kind::Times) cursor.expectWord(u"times");
}

void BlockParser::repeatWith(Repeat &repeat) {
  repeat.variable = all.takeName(QStringLiteral("variable name"));
  ScriptCursor &cursor = all.cursor;
  if (cursor.takeWord(u"in")) {
    repeat.kind = Repeat::Kind::In;
    repeat.first = all.operations.expression();
    return;
  }
  repeat.kind = Repeat::Kind::With;
  cursor.expectWord(u"from");
  repeat.first = all.operations.expression();
  cursor.expectWord(u"to");
  repeat.last = all.operations.expression();
  if (cursor.takeWord(u"by")) repeat.step = all.operations.expression();
}

/// A block of the one statement that stands behind `then` or `to`.
Block BlockParser::line() {
  Block body;
  body.push_back(all.statements.statement());
  return body;
}
