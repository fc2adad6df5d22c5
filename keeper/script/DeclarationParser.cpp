#include "keeper/script/DeclarationParser.h"

#include "keeper/script/ScriptParsing.h"

using namespace scriptTree;

Script DeclarationParser::script(bool wholeText) {
  const StatementParser::Frame outside = std::exchange(all.statements.frame, {});
  const QSet<QString> outerProperties = std::exchange(propertyNames, {});
  const QSet<QString> outerHandlers = std::exchange(handlerNames, {});
  Script made;
  declarations(made, wholeText);
  all.statements.frame = outside;
  propertyNames = outerProperties;
  handlerNames = outerHandlers;
  return made;
}

/// `script S`, its lines, `end script`.
DefineScript DeclarationParser::definition() {
  all.cursor.expectWord(u"script");
  DefineScript made{all.takeName(QStringLiteral("name of a script object")), nullptr};
  all.statements.expectLineEnd();
  made.script = std::make_unique<Script>(script(false));
  all.statements.expectEnd(QStringLiteral("script"));
  return made;
}

const ScriptDictionary *DeclarationParser::termsSource() {
  ScriptCursor &cursor = all.cursor;
  cursor.expectWord(u"terms");
  cursor.expectWord(u"from");
  const qsizetype start = cursor.start();
  if (!cursor.takeWord(u"application")) cursor.expectWord(u"app");
  cursor.takeWord(u"id");
  if (!cursor.peek().is(ScriptToken::Kind::Text)) cursor.failExpected(QStringLiteral("text"));
  const QString name = cursor.take().text;
  if (const ScriptDictionary *dictionary = all.terms.dictionaryOf(name)) return dictionary;
  throw ScriptError{scriptErrors::kApplicationNotFound,
                    QStringLiteral("The application “%1” was not found.").arg(name), cursor.since(start)};
}

void DeclarationParser::declarations(Script &script, bool wholeText) {
  ScriptCursor &cursor = all.cursor;
  while (true) {
    while (cursor.peek().is(ScriptToken::Kind::LineEnd)) cursor.take();
    if (cursor.peek().is(ScriptToken::Kind::End)) {
      if (wholeText) return;
      cursor.failExpected(QStringLiteral("“end”"));
    }
    if (!wholeText && cursor.atWord(u"end") && !cursor.peek(1).isWord(u"of")) return;
    const qsizetype start = cursor.start();
    if (!declaration(script)) {
      Statement statement = all.statements.statement();
      if (handlerNames.contains(QStringLiteral("run"))) failTwice(QStringLiteral("run"), start);
      script.statements.push_back(std::move(statement));
    }
    all.statements.expectLineEnd();
  }
}

bool DeclarationParser::declaration(Script &script) {
  ScriptCursor &cursor = all.cursor;
  if (cursor.takeWord(u"property")) {
    property(script);
  } else if (cursor.atWord(u"on") || cursor.atWord(u"to")) {
    handler(script);
  } else if (cursor.atWord(u"script")) {
    const ScriptCursor::Level level(cursor);
    script.scripts.push_back(definition());
  } else if (cursor.takeWord(u"using")) {
    const ScriptCursor::Level level(cursor);
    const ScriptTerms::Scope scope(all.terms, termsSource());
    all.statements.expectLineEnd();
    declarations(script, false);
    all.statements.expectEnd(QStringLiteral("using terms from"));
  } else {
    return false;
  }
  return true;
}

void DeclarationParser::property(Script &script) {
  const qsizetype start = all.cursor.start();
  const QString name = all.takeName(QStringLiteral("name of a property"));
  if (propertyNames.contains(name)) {
    throw ScriptError{scriptErrors::kPropertyTwice,
                      QStringLiteral("The property “%1” is specified more than once.").arg(name),
                      all.cursor.since(start)};
  }
  propertyNames.insert(name);
  all.cursor.expectSymbol(u':');
  script.properties.emplace_back(name, all.operations.expression());
}

/// `on f(a, b)`, its lines, `end f`.
void DeclarationParser::handler(Script &script) {
  const StatementParser::Frame outside = std::exchange(all.statements.frame, {});
  const qsizetype start = all.cursor.start();
  all.cursor.take();
  Handler made;
  const bool run = all.cursor.takeWord(u"run");
  made.name = run ? QStringLiteral("run") : all.takeName(QStringLiteral("name of a handler"));
  if (handlerNames.contains(made.name)) failTwice(made.name, start);
  if (run && !script.statements.empty()) failTwice(made.name, start);
  handlerNames.insert(made.name);
  if (run && !all.cursor.atSymbol(u'(')) {
    runParameters(made);
  } else {
    parameters(made, u'(', u')');
  }
  made.range = all.cursor.since(start);
  made.body = all.statements.block();
  endOfHandler(made);
  script.handlers.push_back(std::move(made));
  all.statements.frame = outside;
}

void DeclarationParser::runParameters(Handler &handler) {
  if (all.cursor.atEndOfStatement()) return;
  if (all.cursor.atSymbol(u'{')) return parameters(handler, u'{', u'}');
  QSet<QString> names;
  addParameter(handler, names);
  handler.takesList = true;
}

void DeclarationParser::parameters(Handler &handler, char16_t opening, char16_t closing) {
  QSet<QString> names;
  all.cursor.expectSymbol(opening);
  if (!all.cursor.atSymbol(closing)) {
    do {
      addParameter(handler, names);
    } while (all.cursor.takeSymbol(u','));
  }
  all.cursor.expectSymbol(closing);
}

void DeclarationParser::addParameter(Handler &handler, QSet<QString> &names) {
  const qsizetype start = all.cursor.start();
  const QString name = all.takeName(QStringLiteral("name of a parameter"));
  if (names.contains(name)) {
    throw ScriptError{scriptErrors::kParameterTwice,
                      QStringLiteral("The parameter “%1” is specified more than once.").arg(name),
                      all.cursor.since(start)};
  }
  names.insert(name);
  handler.parameters.append(name);
}

/// `end`, or `end` with the handler's name.
void DeclarationParser::endOfHandler(const Handler &handler) {
  ScriptCursor &cursor = all.cursor;
  const auto fail = [&] { cursor.failExpected(QStringLiteral("“end %1”").arg(handler.name)); };
  if (!cursor.takeWord(u"end")) fail();
  if (cursor.atEndOfStatement()) return;
  const ScriptToken &token = cursor.peek();
  const bool name = token.is(ScriptToken::Kind::Word) || token.is(ScriptToken::Kind::Name);
  if (!name || token.text != handler.name) fail();
  cursor.take();
}

void DeclarationParser::failTwice(const QString &handler, qsizetype start) {
  throw ScriptError{scriptErrors::kHandlerTwice,
                    QStringLiteral("The handler “%1” is specified more than once.").arg(handler),
                    all.cursor.since(start)};
}
