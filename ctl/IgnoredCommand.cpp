#include "ctl/IgnoredCommand.h"

#include "ctl/Declarations.h"
#include "ctl/JsonWriter.h"
#include "ctl/RowText.h"
#include "values/Keys.h"

namespace {

const QString kYes = QStringLiteral("--yes");

QString countOf(const Array &declared) {
  return rowText::counted(declared.size(), "declaration", "declarations");
}

/// A list of declarations, each a list of {"pid", "artist", "name"}, null for what the library does not know.
void writeJson(const Array &declared, const Declarations &declarations, Terminal &terminal) {
  JsonWriter json(terminal.out);
  json.beginArray();
  for (const Value &declaration : declared) {
    json.beginArray();
    for (const Value &pid : declaration.toArray()) {
      const Dictionary track = declarations.track(pid.toText());
      json.beginObject();
      json.member(u"pid", pid);
      json.member(u"artist", track.value(keys::Artist));
      json.member(u"name", track.value(keys::Name));
      json.endObject();
    }
    json.endArray();
  }
  json.endArray();
  json.endLine();
}

void print(const Array &declared, const Declarations &declarations, Terminal &terminal) {
  for (const Value &declaration : declared) {
    for (const Value &pid : declaration.toArray()) {
      const Dictionary track = declarations.track(pid.toText());
      const QString title = track.isNull() ? QStringLiteral("(not in the library)") : rowText::titleOf(track);
      terminal.print(printable(pid.toText()) + QStringLiteral("  ") + title);
    }
    terminal.print({});
  }
  terminal.print(countOf(declared));
}

}  // namespace

QString IgnoredCommand::usage() const {
  return QStringLiteral("list [--json]|clear [--yes] ") + Declarations::usage();
}

int IgnoredCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({Options::json(), kYes}, Declarations::optionNames());
  QString error;
  if (!options.parse(arguments, 1, &error)) return wrongUse(error, terminal);
  const QString verb = options.operands().value(0);
  const bool isList = verb == QStringLiteral("list") && !options.has(kYes);
  const bool isClear = verb == QStringLiteral("clear") && !options.wantsJson();
  if (!isList && !isClear) return wrongUse(QStringLiteral("say what to do with the declarations"), terminal);
  const bool isAgreed = options.has(kYes);
  if (isClear && !isAgreed && !terminal.inIsTerminal)
    return wrongUse(QStringLiteral("say --yes to forget all declarations"), terminal);
  const std::unique_ptr<Declarations> declarations = Declarations::open(options, terminal);
  if (!declarations) return exitCode::kReported;
  return isList ? list(*declarations, options.wantsJson(), terminal)
                : clear(*declarations, isAgreed, terminal);
}

int IgnoredCommand::list(Declarations &declarations, bool asJson, Terminal &terminal) const {
  const Array declared = declarations.store().ignoredDuplicatePIDsArray();
  asJson ? writeJson(declared, declarations, terminal) : print(declared, declarations, terminal);
  return exitCode::kDone;
}

int IgnoredCommand::clear(Declarations &declarations, bool isAgreed, Terminal &terminal) const {
  const QString count = countOf(declarations.store().ignoredDuplicatePIDsArray());
  if (!isAgreed && !agrees(QStringLiteral("Forget %1?").arg(count), terminal))
    return reported(QStringLiteral("nothing was changed"), terminal);
  declarations.store().clear();
  if (!declarations.save(terminal)) return exitCode::kReported;
  terminal.print(QStringLiteral("Forgotten: ") + count);
  return exitCode::kDone;
}
