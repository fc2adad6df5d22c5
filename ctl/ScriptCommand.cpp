#include "ctl/ScriptCommand.h"

#include <QFile>
#include <iterator>
#include <string>

#include "bridge/iTunesInterface.h"
#include "ctl/FailureText.h"
#include "ctl/Options.h"
#include "ctl/ScriptWitness.h"
#include "ctl/Session.h"
#include "platform/keeper/KeeperPlatform.h"

namespace {

const QString kName = QStringLiteral("--name"), kCompiled = QStringLiteral("--compiled"),
              kTimeout = QStringLiteral("--timeout");
constexpr qsizetype kMostArguments = 4;

FormatArgument argument(const QString &text) {
  bool isNumber = false;
  const qint64 number = text.toLongLong(&isNumber);
  if (isNumber && QString::number(number) == text) return number;
  return text;
}

QString filled(const QString &text, const QStringList &words) {
  switch (words.size()) {
    case 0:
      return formatText(text, {});
    case 1:
      return formatText(text, {argument(words[0])});
    case 2:
      return formatText(text, {argument(words[0]), argument(words[1])});
    case 3:
      return formatText(text, {argument(words[0]), argument(words[1]), argument(words[2])});
    default:
      return formatText(text,
                        {argument(words[0]), argument(words[1]), argument(words[2]), argument(words[3])});
  }
}

std::optional<QString> textOfFile(const QString &path, Terminal &terminal) {
  if (path == u"-") {
    return QString::fromStdString(
        {std::istreambuf_iterator<char>(terminal.in), std::istreambuf_iterator<char>()});
  }
  QFile file(path);
  if (file.open(QIODevice::ReadOnly)) return QString::fromUtf8(file.readAll());
  terminal.say(QStringLiteral("cannot read \"%1\": %2").arg(printable(path), file.errorString()));
  return std::nullopt;
}

std::optional<QString> sourceOf(const Options &options, Terminal &terminal) {
  if (!options.has(kName)) return textOfFile(options.operands().value(0), terminal);
  const QString name = options.value(kName);
  const std::optional<QString> text = iTunesInterface::scriptNamed(name);
  if (text) return filled(*text, options.operands());
  terminal.say(QStringLiteral("there is no script named \"%1\"").arg(printable(name)));
  return std::nullopt;
}

/// A result as a person reads it: lists in braces.
QString shown(const ScriptDescriptor &result) {
  if (result.type != ScriptDescriptor::Type::List) return result.stringValue().value_or(QString());
  QStringList items;
  for (const ScriptDescriptor &item : result.list) items += shown(item);
  return u'{' + items.join(QStringLiteral(", ")) + u'}';
}

/// As `printable`, but lines and tabs stay: scripts answer tables in them.
QString printableTable(QString text) {
  QStringList lines;
  for (const QString &line :
       text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n').split(u'\n')) {
    QStringList cells;
    for (const QString &cell : line.split(u'\t')) cells += printable(cell);
    lines += cells.join(u'\t');
  }
  return lines.join(u'\n');
}

int tell(const std::optional<ScriptDescriptor> &result, const ScriptWitness &witness, double timeout,
         Terminal &terminal) {
  if (result) {
    if (result->type != ScriptDescriptor::Type::None) terminal.print(printableTable(shown(*result)));
    return exitCode::kDone;
  }
  const std::optional<ScriptFailure> failure = witness.failure();
  if (!failure && timeout > 0)
    return reported(QStringLiteral("no answer within %1 seconds").arg(timeout), terminal);
  terminal.say(textOf(failure.value_or(ScriptFailure{iTunesInterface::lastScriptErrorNumber(), {}})));
  if (!witness.offendingText().isEmpty())
    terminal.say(QStringLiteral("at: ") + printable(witness.offendingText()));
  return exitCode::kReported;
}

}  // namespace

int ScriptCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({}, {kName, kCompiled, kTimeout});
  QString error;
  if (!options.parse(arguments, 1000, &error)) return wrongUse(error, terminal);
  const bool isNamed = options.has(kName), isCompiled = options.has(kCompiled);
  bool isNumber = true;
  const double timeout = options.has(kTimeout) ? options.value(kTimeout).toDouble(&isNumber) : 0.0;
  if (!isNumber || timeout < 0) return wrongUse(QStringLiteral("--timeout takes seconds"), terminal);
  if (isNamed && isCompiled) return wrongUse(QStringLiteral("a script is named or compiled"), terminal);
  if (isCompiled && timeout > 0)
    return wrongUse(QStringLiteral("a compiled handler has no time limit"), terminal);
  if (isNamed && options.operands().size() > kMostArguments)
    return wrongUse(QStringLiteral("a named script takes at most %1 arguments").arg(kMostArguments),
                    terminal);
  if (!isNamed && !isCompiled && options.operands().size() != 1)
    return wrongUse(QStringLiteral("say which script to run"), terminal);
  const Session session(Session::LogAtEnd::StaysText);
  if (platform().scriptHost) return runHere(options, timeout, terminal);
  const KeeperPlatform keeper(KeeperPlatform::Launching::WhenNeeded);
  return runHere(options, timeout, terminal);
}

int ScriptCommand::runHere(const Options &options, double timeout, Terminal &terminal) const {
  const ScriptWitness witness;
  std::optional<ScriptDescriptor> result;
  if (options.has(kCompiled)) {
    const auto text =
        iTunesInterface::stringFromCompiledFunctionParams(options.value(kCompiled), options.operands());
    if (text) result = ScriptDescriptor::ofText(*text);
    if (!text && !witness.failure()) result = ScriptDescriptor();
  } else {
    const std::optional<QString> source = sourceOf(options, terminal);
    if (!source) return exitCode::kReported;
    result = iTunesInterface::descFromScriptTimeoutSeconds(*source, float(timeout));
  }
  return tell(result, witness, timeout, terminal);
}
