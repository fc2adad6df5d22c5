#include "keeper/script/StatementParser.h"

#include "keeper/script/ScriptParsing.h"

using namespace scriptTree;

namespace {

bool isTarget(const Expression &node) {
  if (const List *list = std::get_if<List>(&node.form)) {
    for (const ExpressionPtr &item : list->items) {
      if (!isTarget(*item)) return false;
    }
    return true;
  }
  if (const Record *record = std::get_if<Record>(&node.form)) {
    for (const auto &[label, field] : record->fields) {
      if (!isTarget(*field)) return false;
    }
    return true;
  }
  return std::holds_alternative<Variable>(node.form) || std::holds_alternative<Property>(node.form) ||
         std::holds_alternative<Element>(node.form) || std::holds_alternative<Insertion>(node.form);
}

}  // namespace

Statement StatementParser::statement() {
  const ScriptCursor::Level level(all.cursor);
  const qsizetype start = all.cursor.start();
  Statement made;
  made.form = form();
  made.range = all.cursor.since(start);
  return made;
}

Statement::Form StatementParser::form() {
  ScriptCursor &cursor = all.cursor;
  if (all.blocks.isNext()) return all.blocks.statement();
  if (cursor.takeWord(u"set")) return set();
  if (cursor.takeWord(u"copy")) return copy();
  if (cursor.takeWord(u"return")) return giveBack();
  if (cursor.takeWord(u"error")) return Raise{errorParts(false)};
  if (cursor.atWord(u"exit")) return exitRepeat();
  if (cursor.takeWord(u"global")) return declare(true);
  if (cursor.takeWord(u"local")) return declare(false);
  if (cursor.atWord(u"script")) return all.declarations.definition();
  return Evaluate{all.operations.expression()};
}

Statement::Form StatementParser::set() {
  Set set;
  set.target = target();
  all.cursor.expectWord(u"to");
  set.value = all.operations.expression();
  return set;
}

Statement::Form StatementParser::copy() {
  Copy copy;
  copy.value = all.operations.expression();
  all.cursor.expectWord(u"to");
  copy.target = target();
  return copy;
}

ExpressionPtr StatementParser::target() {
  ExpressionPtr node = all.references.reference();
  if (isTarget(*node)) return node;
  throw ScriptError{scriptErrors::kExpected,
                    QStringLiteral("Expected a variable, a property or an element to set."), node->range};
}

Statement::Form StatementParser::giveBack() {
  if (all.cursor.atEndOfStatement() || all.cursor.atWord(u"else")) return Return{};
  return Return{all.operations.expression()};
}

Statement::Form StatementParser::exitRepeat() {
  const qsizetype start = all.cursor.start();
  all.cursor.take();
  all.cursor.takeWord(u"repeat");
  if (frame.repeats > 0) return ExitRepeat{};
  throw ScriptError{scriptErrors::kExitOutsideRepeat,
                    QStringLiteral("“exit repeat” stands outside a repeat."), all.cursor.since(start)};
}

Statement::Form StatementParser::declare(bool global) {
  Declare declare{global, {}};
  do {
    const qsizetype start = all.cursor.start();
    const QString name = all.takeName(QStringLiteral("variable name"));
    if ((global ? frame.locals : frame.globals).contains(name)) {
      throw ScriptError{scriptErrors::kLocalAndGlobal,
                        QStringLiteral("The variable “%1” is local and global.").arg(name),
                        all.cursor.since(start)};
    }
    (global ? frame.globals : frame.locals).insert(name);
    declare.names.append(name);
  } while (all.cursor.takeSymbol(u','));
  return declare;
}

ErrorParts StatementParser::errorParts(bool pattern) {
  ErrorParts parts;
  ScriptCursor &cursor = all.cursor;
  const auto labelled = [&] {
    return cursor.atWord(u"number") || cursor.atWord(u"from") || cursor.atWord(u"to") ||
           (cursor.atWord(u"partial") && cursor.peek(1).isWord(u"result"));
  };
  if (!cursor.atEndOfStatement() && !cursor.atWord(u"else") && !labelled())
    parts.message = errorPart(pattern);
  while (labelled()) {
    ExpressionPtr *part = cursor.atWord(u"number") ? &parts.number
                          : cursor.atWord(u"from") ? &parts.from
                          : cursor.atWord(u"to")   ? &parts.to
                                                   : &parts.partialResult;
    // Said twice: the second one does not fit.
    if (*part) cursor.failExpected(QStringLiteral("end of line"));
    cursor.skip(part == &parts.partialResult ? 2 : 1);
    *part = errorPart(pattern);
  }
  return parts;
}

ExpressionPtr StatementParser::errorPart(bool pattern) {
  if (!pattern) return all.operations.expression();
  const qsizetype start = all.cursor.start();
  const bool negative = all.cursor.takeSymbol(u'-');
  const ScriptToken &token = all.cursor.peek();
  if (token.is(ScriptToken::Kind::Integer)) {
    const qint64 number = all.cursor.take().integer;
    return all.make(start, Literal{negative ? -number : number});
  }
  if (negative) all.cursor.failExpected(QStringLiteral("number"));
  if (token.is(ScriptToken::Kind::Text)) return all.make(start, Literal{all.cursor.take().text});
  Variable variable{all.takeName(QStringLiteral("variable name"))};
  return all.make(start, std::move(variable));
}

Block StatementParser::block() {
  expectLineEnd();
  Block statements;
  ScriptCursor &cursor = all.cursor;
  while (true) {
    while (cursor.peek().is(ScriptToken::Kind::LineEnd)) cursor.take();
    if (cursor.atWord(u"end") && !cursor.peek(1).isWord(u"of")) return statements;
    if (cursor.atWord(u"else") || cursor.atWord(u"on")) return statements;
    if (cursor.peek().is(ScriptToken::Kind::End)) cursor.failExpected(QStringLiteral("“end”"));
    statements.push_back(statement());
    expectLineEnd();
  }
}

void StatementParser::expectLineEnd() {
  if (!all.cursor.atEndOfStatement()) all.cursor.fail(QStringLiteral("end of line"));
  if (all.cursor.peek().is(ScriptToken::Kind::LineEnd)) all.cursor.take();
}

void StatementParser::expectEnd(const QString &words) {
  ScriptCursor &cursor = all.cursor;
  if (!cursor.takeWord(u"end")) cursor.failExpected(QStringLiteral("“end %1”").arg(words));
  if (cursor.atEndOfStatement()) return;
  for (const QStringView word : QStringView(words).tokenize(u' ')) {
    if (!cursor.takeWord(word)) cursor.failExpected(QStringLiteral("“end %1”").arg(words));
  }
}
