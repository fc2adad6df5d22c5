#include "keeper/script/ScriptCursor.h"

#include "keeper/script/ScriptParser.h"

namespace {

QString describe(const ScriptToken &token) {
  switch (token.kind) {
    case ScriptToken::Kind::Word:
      return token.reserved ? QStringLiteral("“%1”").arg(token.text) : QStringLiteral("identifier");
    case ScriptToken::Kind::Name:
      return QStringLiteral("identifier");
    case ScriptToken::Kind::Text:
      return QStringLiteral("text");
    case ScriptToken::Kind::Integer:
    case ScriptToken::Kind::Real:
    case ScriptToken::Kind::Ordinal:
      return QStringLiteral("number");
    case ScriptToken::Kind::Code:
      return QStringLiteral("«»");
    case ScriptToken::Kind::Symbol:
      return QStringLiteral("“%1”").arg(QChar(token.symbol));
    case ScriptToken::Kind::Possessive:
      return QStringLiteral("“'s”");
    case ScriptToken::Kind::LineEnd:
      return QStringLiteral("end of line");
    case ScriptToken::Kind::End:
      break;
  }
  return QStringLiteral("end of script");
}

bool beginsValue(const ScriptToken &token) {
  return token.kind <= ScriptToken::Kind::Code && !token.reserved;
}

}  // namespace

void ScriptCursor::read() {
  if (!spare) spare = &items.emplace_back();
  spare->token = lexer.next();
  Item *item = spare;
  spare = item->next;
  item->next = nullptr;
  (first ? last->next : first) = item;
  last = item;
}

const ScriptToken &ScriptCursor::take() {
  const ScriptToken &token = peek();
  valueEnded = beginsValue(token) || token.isSymbol(u')') || token.isSymbol(u'}');
  end = token.range.start + token.range.length;
  Item *item = first;
  first = item->next;
  item->next = spare;
  spare = item;
  return token;
}

void ScriptCursor::skip(int tokens) {
  for (int left = tokens; left > 0; --left) take();
}

bool ScriptCursor::takeSymbol(char16_t sign) {
  if (!atSymbol(sign)) return false;
  take();
  return true;
}

void ScriptCursor::expectSymbol(char16_t sign) {
  if (!takeSymbol(sign)) fail(QStringLiteral("“%1”").arg(QChar(sign)));
}

void ScriptCursor::failWord(QStringView expected) {
  fail(QStringLiteral("“%1”").arg(expected));
}

void ScriptCursor::fail(const QString &expected) {
  if (valueEnded && beginsValue(peek())) failAfter();
  failExpected(expected);
}

void ScriptCursor::failExpected(const QString &expected) {
  const ScriptToken &found = peek();
  const SourceRange range = found.endsStatement() ? SourceRange{found.range.start, 0} : found.range;
  throw ScriptError{scriptErrors::kExpected,
                    QStringLiteral("Expected %1 but found %2.").arg(expected, describe(found)), range};
}

void ScriptCursor::failAfter() {
  const ScriptToken &found = peek();
  const QString what = describe(found);
  const QString article = what.startsWith(u'i') ? QStringLiteral("An") : QStringLiteral("A");
  throw ScriptError{scriptErrors::kCannotGoAfter,
                    QStringLiteral("%1 %2 can’t go after what stands before it.").arg(article, what),
                    found.range};
}

ScriptCursor::Level::Level(ScriptCursor &cursor_) : cursor(cursor_) {
  if (cursor.depth >= ScriptParser::kDeepest) {
    throw ScriptError{scriptErrors::kStackOverflow, QStringLiteral("The script is nested too deeply."),
                      cursor.peek().range};
  }
  ++cursor.depth;
}
