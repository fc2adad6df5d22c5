#include "keeper/script/CommandParser.h"

#include <algorithm>
#include <array>

#include "keeper/script/ScriptParsing.h"

using namespace scriptTree;

using Function = Builtin::Function;

ExpressionPtr CommandParser::command() {
  const qsizetype start = all.cursor.start();
  const ScriptTerms::Term term = all.terms.at();
  all.cursor.skip(term.words);
  Command command{term.meaning, nullptr, {}};
  const ScriptTerms::Parameters inside(all.terms, term.verb);
  if (all.atValue()) command.direct = all.operations.expression();
  parameters(command);
  return all.make(start, std::move(command));
}

ExpressionPtr CommandParser::codedCommand(const QString &code) {
  const qsizetype start = all.cursor.start();
  all.cursor.take();
  Command command{code, nullptr, {}};
  if (all.atValue()) command.direct = all.operations.expression();
  return all.make(start, std::move(command));
}

void CommandParser::parameters(Command &command) {
  QString label;
  while (const int length = all.terms.label(&label)) {
    all.cursor.skip(length);
    addParameter(command, label, all.operations.expression());
  }
  booleanParameters(command);
}

/// `with once and twice without thrice`.
void CommandParser::booleanParameters(Command &command) {
  while (all.cursor.atWord(u"with") || all.cursor.atWord(u"without")) {
    const bool value = all.cursor.take().text == u"with";
    do {
      QString label;
      const qsizetype start = all.cursor.start();
      const int length = all.terms.label(&label);
      if (length == 0) all.cursor.failExpected(QStringLiteral("label of a parameter"));
      all.cursor.skip(length);
      addParameter(command, label, all.make(start, Literal{value}));
    } while (all.cursor.takeWord(u"and"));
  }
}

void CommandParser::addParameter(Command &command, const QString &label, ExpressionPtr value) {
  for (const auto &[known, other] : command.parameters) {
    if (known != label) continue;
    throw ScriptError{scriptErrors::kParameterTwice,
                      QStringLiteral("The parameter “%1” is specified more than once.").arg(label),
                      value->range};
  }
  command.parameters.emplace_back(label, std::move(value));
}

ExpressionPtr CommandParser::function() {
  const qsizetype start = all.cursor.start();
  const ScriptTerms::Term term = all.terms.at();
  all.cursor.skip(term.words);
  const bool file = term.function == Function::PosixFile || term.function == Function::File ||
                    term.function == Function::Alias;
  // `class of f is alias` speaks of the class.
  if (file && !all.atValue()) return all.make(start, Literal{ScriptClassName{term.meaning}});
  return all.make(start, Builtin{term.function, arguments(term.function)});
}

Expressions CommandParser::arguments(Function function) {
  Expressions found;
  switch (function) {
    case Function::CurrentDate:
    case Function::TimeToGmt:
      break;
    case Function::Delay:
      if (all.atValue()) found.push_back(all.operations.expression());
      break;
    case Function::PosixFile:
    case Function::File:
    case Function::Alias:
    case Function::CharacterId:
    case Function::StringId: {
      const ScriptCursor::Level level(all.cursor);
      found.push_back(all.references.chain());
      break;
    }
    case Function::Offset: {
      all.cursor.expectWord(u"of");
      const bool outside = std::exchange(all.references.inEndsChain, true);
      found.push_back(all.operations.expression());
      all.references.inEndsChain = outside;
      all.cursor.expectWord(u"in");
      found.push_back(all.operations.expression(OperationParser::Level::As));
      break;
    }
    case Function::Round:
      found.push_back(all.operations.expression());
      if (all.cursor.takeWord(u"rounding")) found.push_back(rounding());
      break;
    case Function::LoadScript:
    case Function::RunScript:
    case Function::Log:
      found.push_back(all.operations.expression());
      break;
  }
  return found;
}

ExpressionPtr CommandParser::rounding() {
  const qsizetype start = all.cursor.start();
  static const std::array<QString, 5> modes = {QStringLiteral("up"), QStringLiteral("down"),
                                               QStringLiteral("toward zero"), QStringLiteral("to nearest"),
                                               QStringLiteral("as taught in school")};
  for (const QString &mode : modes) {
    const QStringList words = mode.split(u' ');
    int count = 0;
    while (count < words.size() && all.cursor.peek(count).isWord(words[count])) ++count;
    if (count < words.size()) continue;
    all.cursor.skip(count);
    return all.make(start, Literal{mode});
  }
  all.cursor.failExpected(QStringLiteral("a way of rounding"));
}

ExpressionPtr CommandParser::get() {
  const qsizetype start = all.cursor.start();
  all.cursor.take();
  return all.make(start, Get{all.operations.expression()});
}

ExpressionPtr CommandParser::count() {
  const ScriptCursor::Level level(all.cursor);
  const qsizetype start = all.cursor.start();
  all.cursor.take();
  QString each;
  if (all.cursor.takeWord(u"each")) {
    if (!all.terms.atClass()) all.cursor.failExpected(QStringLiteral("class name"));
    each = all.terms.at().meaning;
    all.cursor.skip(all.terms.at().words);
    if (!all.cursor.takeWord(u"in")) all.cursor.expectWord(u"of");
  } else if (!all.cursor.takeWord(u"of")) {
    all.cursor.takeWord(u"in");
  }
  return all.make(start, Count{all.references.reference(), each});
}

ExpressionPtr CommandParser::numberOf() {
  const ScriptCursor::Level level(all.cursor);
  const qsizetype start = all.cursor.start();
  all.cursor.skip(2);
  return all.make(start, Count{all.references.reference(), {}});
}

ExpressionPtr CommandParser::exists() {
  const ScriptCursor::Level level(all.cursor);
  const qsizetype start = all.cursor.start();
  all.cursor.take();
  return all.make(start, Exists{all.references.reference()});
}

ExpressionPtr CommandParser::handlerCall() {
  const qsizetype start = all.cursor.start();
  HandlerCall call{all.takeName(QStringLiteral("name of a handler")), {}, nullptr};
  const ScriptTerms::Parameters none(all.terms, nullptr);
  const bool outside = std::exchange(all.references.inEndsChain, false);
  all.cursor.expectSymbol(u'(');
  if (!all.cursor.atSymbol(u')')) {
    do {
      call.arguments.push_back(all.operations.expression());
    } while (all.cursor.takeSymbol(u','));
  }
  all.cursor.expectSymbol(u')');
  all.references.inEndsChain = outside;
  return all.make(start, std::move(call));
}
