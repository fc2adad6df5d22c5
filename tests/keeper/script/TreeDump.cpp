#include "tests/keeper/script/TreeDump.h"

using namespace scriptTree;

namespace {

QString dump(const ExpressionPtr &node);
QString dump(const Block &block);
QString part(const QString &text);
QString part(const ExpressionPtr &expression);
QString part(const Block &block);
QString part(const Expressions &expressions);
QString part(const std::vector<std::pair<QString, ExpressionPtr>> &pairs);

/// `(head part part …)`, without the parts that are empty.
template <typename... Parts>
QString node(const char *head, const Parts &...parts) {
  QString text = u'(' + QString::fromLatin1(head);
  const auto append = [&](const QString &piece) {
    if (!piece.isEmpty()) text += u' ' + piece;
  };
  (append(part(parts)), ...);
  return text + u')';
}

QString part(const QString &text) {
  return text;
}
QString part(const ExpressionPtr &expression) {
  return dump(expression);
}
QString part(const Block &block) {
  return block.empty() ? QString() : dump(block);
}
QString part(const Expressions &expressions) {
  QStringList texts;
  for (const ExpressionPtr &expression : expressions) texts += dump(expression);
  return texts.join(u' ');
}
QString part(const std::vector<std::pair<QString, ExpressionPtr>> &pairs) {
  QStringList texts;
  for (const auto &[name, value] : pairs) texts += name + u':' + dump(value);
  return texts.join(u' ');
}
QString labelled(const char *label, const ExpressionPtr &value) {
  return value ? QString::fromLatin1(label) + u':' + dump(value) : QString();
}

QString of(const Literal &literal) {
  const ScriptValue &value = literal.value;
  switch (value.type()) {
    case ScriptValue::Type::Text:
      return u'"' + value.text() + u'"';
    case ScriptValue::Type::Integer:
      return QString::number(value.integer());
    case ScriptValue::Type::Real:
      return QString::number(value.real(), 'g', 12) + u'r';
    case ScriptValue::Type::Boolean:
      return value.boolean() ? QStringLiteral("true") : QStringLiteral("false");
    case ScriptValue::Type::Constant:
      return u'#' + value.term();
    case ScriptValue::Type::ClassName:
      return u'<' + value.term() + u'>';
    default:
      return QStringLiteral("missing");
  }
}

QString of(const Special &special) {
  static const char *const words[] = {"it", "me", "result", "AppleScript"};
  return QString::fromLatin1(words[int(special.word)]);
}

QString of(const Unary &unary) {
  static const char *const words[] = {"neg", "plus", "not"};
  return node(words[int(unary.op)], unary.operand);
}

QString of(const Operation &operation) {
  static const char *const signs[] = {"^",      "*",    "/",  "div",   "mod", "+",  "-",        "&",
                                      "<",      "<=",   ">",  ">=",    "=",   "!=", "contains", "lacks",
                                      "starts", "ends", "in", "notin", "and", "or"};
  QString text = u'(' + dump(operation.first);
  for (const Operation::Link &link : operation.links) {
    text += u' ' + QString::fromLatin1(signs[int(link.op)]) + u' ' + dump(link.operand);
  }
  return text + u')';
}

QString of(const Element &element) {
  static const char *const selectors[] = {"every", "key",    "index", "name", "id",
                                          "nth",   "middle", "some",  "range"};
  const QString ordinal =
      element.selector == Element::Selector::Ordinal ? QString::number(element.ordinal) : QString();
  return node(selectors[int(element.selector)], u'<' + element.className + u'>', ordinal, element.key,
              element.upTo, labelled("of", element.container), labelled("whose", element.test));
}

QString of(const Insertion &insertion) {
  static const char *const places[] = {"beginning", "end", "before", "after"};
  return node(places[int(insertion.place)], insertion.anchor);
}

QString of(const Builtin &builtin) {
  static const char *const names[] = {"current-date", "delay",     "offset",      "posix-file", "file",
                                      "alias",        "round",     "load-script", "run-script", "time-to-gmt",
                                      "character-id", "string-id", "log"};
  return node(names[int(builtin.function)], builtin.arguments);
}

QString of(const Variable &variable) {
  return variable.name;
}
QString of(const List &list) {
  return node("list", list.items);
}
QString of(const Record &record) {
  return node("record", record.fields);
}
QString of(const Coercion &coercion) {
  return node("as", coercion.operand, coercion.type);
}
QString of(const Property &property) {
  return node("prop", property.term, labelled("of", property.container));
}
QString of(const ReferenceTo &reference) {
  return node("ref", reference.operand);
}
QString of(const Application &app) {
  return node(app.isIdentifier ? "app-id" : "app", app.name);
}
QString of(const Get &get) {
  return node("get", get.operand);
}
QString of(const Count &count) {
  return node("count", count.each, count.operand);
}
QString of(const Exists &exists) {
  return node("exists", exists.operand);
}
QString of(const Command &command) {
  return node("do", command.verb, command.direct, command.parameters);
}
QString of(const HandlerCall &call) {
  return node("call", call.name, call.arguments, labelled("on", call.target));
}

QString dump(const ExpressionPtr &expression) {
  return expression ? std::visit([](const auto &form) { return of(form); }, expression->form) : QString();
}

QString of(const ErrorParts &parts) {
  QStringList texts = {dump(parts.message), labelled("number", parts.number), labelled("from", parts.from),
                       labelled("partial", parts.partialResult), labelled("to", parts.to)};
  texts.removeAll(QString());
  return texts.join(u' ');
}

QString of(const If &statement) {
  QString text = QStringLiteral("(if");
  for (const If::Branch &branch : statement.branches)
    text += u' ' + dump(branch.condition) + u' ' + dump(branch.body);
  return text + (statement.otherwise.empty() ? QString() : u' ' + dump(statement.otherwise)) + u')';
}

QString of(const Repeat &repeat) {
  static const char *const kinds[] = {"repeat", "times", "while", "until", "with", "each"};
  return node(kinds[int(repeat.kind)], repeat.variable, repeat.first, repeat.last, repeat.step, repeat.body);
}

QString of(const Evaluate &statement) {
  return dump(statement.expression);
}
QString of(const Set &set) {
  return node("set", set.target, set.value);
}
QString of(const Copy &copy) {
  return node("copy", copy.value, copy.target);
}
QString of(const Return &statement) {
  return node("return", statement.value);
}
QString of(const ExitRepeat &) {
  return QStringLiteral("(exit)");
}
QString of(const Tell &tell) {
  return node("tell", tell.target, tell.body);
}
QString of(const UsingTerms &terms) {
  return node("using", terms.body);
}
QString of(const Try &statement) {
  return statement.hasHandler
             ? node("try", dump(statement.body), node("on", of(statement.caught)), statement.handler)
             : node("try", dump(statement.body));
}
QString of(const Raise &raise) {
  return node("error", of(raise.parts));
}
QString of(const Declare &declare) {
  return node(declare.isGlobal ? "global" : "local", declare.names.join(u' '));
}
QString of(const WithTimeout &timeout) {
  return node("timeout", timeout.seconds, timeout.body);
}
QString of(const Considering &considering) {
  return node("considering", considering.considered.join(u','), u'/' + considering.ignored.join(u','),
              considering.body);
}
QString of(const DefineScript &definition) {
  return node("script", definition.name, treeDump::of(*definition.script));
}

QString dump(const Block &block) {
  QStringList texts;
  for (const Statement &statement : block) {
    texts += std::visit([](const auto &form) { return of(form); }, statement.form);
  }
  return u'[' + texts.join(u' ') + u']';
}

}  // namespace

QString treeDump::of(const Script &script) {
  QStringList texts;
  for (const auto &[name, value] : script.properties) texts += node("property", name, value);
  for (const Handler &handler : script.handlers) {
    const QString stars = handler.takesList ? QStringLiteral("*") : QString();
    texts += node("on", handler.name + u'(' + stars + handler.parameters.join(u',') + u')', handler.body);
  }
  for (const DefineScript &definition : script.scripts) texts += ::of(definition);
  if (!script.statements.empty()) texts += dump(script.statements);
  return texts.join(u' ');
}
