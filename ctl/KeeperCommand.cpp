#include "ctl/KeeperCommand.h"

#include <QFileInfo>
#include <QProcess>
#include <chrono>

#include "ctl/FailureText.h"
#include "ctl/JsonWriter.h"
#include "ctl/KeeperProcess.h"
#include "ctl/KeeperSettingsTable.h"
#include "ctl/Options.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperConnection.h"
#include "platform/keeper/KeeperLauncher.h"
#include "platform/keeper/KeeperLock.h"
#include "platform/keeper/KeeperStatus.h"
#include "platform/keeper/OutcomeJson.h"

using namespace keeperProtocol;
using namespace std::chrono_literals;

namespace {

const QString kMap = QStringLiteral("--map");

int tell(const ScriptOutcome &outcome, Terminal &terminal) {
  if (outcome.failure) return reported(textOf(*outcome.failure), terminal);
  const QString lines = outcome.result ? outcome.result->text : QString();
  for (const QString &line : lines.split(u'\n', Qt::SkipEmptyParts)) terminal.print(printable(line));
  return exitCode::kDone;
}

QString progressOf(const Importing &importing) {
  if (importing.file.isEmpty()) return QStringLiteral("Opening its library");
  const QString of = importing.total > 0 ? QStringLiteral(" of %1").arg(importing.total) : QString();
  return QStringLiteral("Importing %1: %2%3 tracks")
      .arg(printable(importing.file))
      .arg(importing.done)
      .arg(of);
}

void printJson(const std::optional<Status> &status, Terminal &terminal) {
  JsonWriter json(terminal.out);
  json.beginObject();
  json.member(u"running", Value(status.has_value()));
  if (status) {
    json.member(u"version", Value(status->version));
    json.member(u"folder", Value(status->folder));
    json.member(u"pid", Value(status->processID));
    json.member(u"tracks", Value(status->tracks));
    json.member(u"playing", Value(status->playing));
    if (!status->importProblem.isEmpty()) json.member(u"importProblem", Value(status->importProblem));
  }
  if (status && status->importing) {
    json.key(u"importing");
    json.beginObject();
    json.member(u"done", Value(status->importing->done));
    json.member(u"total", Value(status->importing->total));
    json.member(u"file", Value(status->importing->file));
    json.endObject();
  }
  json.endObject();
  json.endLine();
}

}  // namespace

KeeperCommand::KeeperCommand() : place(KeeperPlace::ofUser(platform().folders.temporary)) {}

int KeeperCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({Options::json()}, {kMap});
  QString error;
  if (!options.parse(arguments, 3, &error)) return wrongUse(error, terminal);
  const QString verb = options.operands().value(0), first = options.operands().value(1);
  const qsizetype count = options.operands().size();
  if (options.wantsJson() && verb != u"status")
    return wrongUse(QStringLiteral("%1 goes with status").arg(Options::json()), terminal);
  if (options.has(kMap) && verb != u"import")
    return wrongUse(QStringLiteral("%1 goes with import").arg(kMap), terminal);
  if (verb == u"settings")
    return count < 3 ? keeperSettings::show(first, terminal)
                     : keeperSettings::change(first, options.operands()[2], terminal);
  if (verb == u"status" && count == 1) return status(options.wantsJson(), terminal);
  if (verb == u"start" && count == 1)
    return KeeperProcess().start(terminal) ? exitCode::kDone : exitCode::kReported;
  if (verb == u"stop" && count == 1)
    return KeeperProcess().stop(terminal) ? exitCode::kDone : exitCode::kReported;
  if (verb == u"import" && count == 2) return importFile(first, options.values(kMap), terminal);
  if (verb == u"export" && count == 2) return exportFile(first, terminal);
  return wrongUse(QStringLiteral("say what to do with Music Keeper"), terminal);
}

int KeeperCommand::status(bool asJson, Terminal &terminal) const {
  const std::optional<qint64> holder = KeeperLock::holder(place.lock());
  const auto status = holder ? statusOfKeeper(place, 3s) : std::nullopt;
  if (holder && !status)
    return reported(QStringLiteral("Music Keeper (process %1) does not answer").arg(*holder), terminal);
  if (asJson) {
    printJson(status, terminal);
  } else if (!status) {
    terminal.print(QStringLiteral("Music Keeper does not run"));
  } else {
    terminal.print(QStringLiteral("Music Keeper %1, process %2").arg(status->version).arg(status->processID));
    terminal.print(
        QStringLiteral("Library: %1, %2 tracks").arg(printable(status->folder)).arg(status->tracks));
    if (status->importing) terminal.print(progressOf(*status->importing));
    if (!status->importProblem.isEmpty())
      terminal.print(QStringLiteral("The import failed: %1").arg(printable(status->importProblem)));
    if (status->playing) terminal.print(QStringLiteral("Playing"));
  }
  return status ? exitCode::kDone : exitCode::kReported;
}

int KeeperCommand::importFile(const QString &file, const QStringList &mapping, Terminal &terminal) const {
  ImportRequest request{QFileInfo(file).absoluteFilePath(), {}};
  QStringList arguments{QStringLiteral("--import"), request.file};
  for (const QString &entry : mapping) {
    const auto pair = mappingOfText(entry);
    if (!pair) return wrongUse(QStringLiteral("--map takes OLD=NEW"), terminal);
    request.mapping.push_back(*pair);
    arguments << kMap << entry;
  }
  return transfer(request, arguments, terminal);
}

int KeeperCommand::exportFile(const QString &file, Terminal &terminal) const {
  const QString path = QFileInfo(file).absoluteFilePath();
  return transfer(ExportRequest{path}, {QStringLiteral("--export"), path}, terminal);
}

int KeeperCommand::transfer(const Request &request, const QStringList &arguments, Terminal &terminal) const {
  if (const auto connection = KeeperConnection::open(place, std::nullopt, nullptr)) {
    const auto answer = connection->ask(encodeRequest(request));
    const auto outcome = answer ? decodeOutcome(*answer) : std::nullopt;
    return tell(outcome.value_or(failed(kConnectionInvalid, QStringLiteral("Music Keeper went away."))),
                terminal);
  }
  QProcess keeper;
  keeper.start(KeeperLauncher::standardProgram(), arguments + QStringList{QStringLiteral("--once")});
  if (!keeper.waitForStarted())
    return reported(QStringLiteral("Music Keeper is not installed beside this program"), terminal);
  keeper.closeWriteChannel();
  keeper.waitForFinished(-1);
  terminal.out << keeper.readAllStandardOutput().toStdString();
  terminal.err << keeper.readAllStandardError().toStdString();
  return keeper.exitStatus() == QProcess::NormalExit ? keeper.exitCode() : exitCode::kReported;
}
