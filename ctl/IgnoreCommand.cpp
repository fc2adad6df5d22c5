#include "ctl/IgnoreCommand.h"

#include "ctl/Declarations.h"
#include "values/Keys.h"
#include "values/PersistentID.h"

namespace {

/// What is wrong with the IDs on the command line; empty if nothing is.
QString complaintAbout(const QStringList &pids) {
  QSet<QString> distinct;
  for (const QString &pid : pids) {
    if (!isPersistentID(pid)) {
      return QStringLiteral("\"%1\" is no persistent ID of 16 hexadecimal digits").arg(printable(pid));
    }
    distinct.insert(pid.toUpper());
  }
  return distinct.size() < 2 ? QStringLiteral("name at least two different tracks") : QString();
}

}  // namespace

QString IgnoreCommand::usage() const {
  return QStringLiteral("PID PID... ") + Declarations::usage();
}

int IgnoreCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({}, Declarations::optionNames());
  QString error;
  if (!options.parse(arguments, arguments.size(), &error)) return wrongUse(error, terminal);
  error = complaintAbout(options.operands());
  if (!error.isEmpty()) return wrongUse(error, terminal);
  const std::unique_ptr<Declarations> declarations = Declarations::open(options, terminal);
  if (!declarations) return exitCode::kReported;
  QStringList pids;
  for (const QString &given : options.operands()) {
    const Dictionary track = declarations->track(given);
    if (track.isNull()) {
      terminal.say(QStringLiteral("the library holds no track %1; nothing was stored").arg(given));
      return exitCode::kReported;
    }
    pids << track.value(keys::PersistentID).toText();
  }
  pids.removeDuplicates();
  const Array declaration = Array::make();
  for (const QString &pid : pids) declaration.append(pid);
  declarations->store().addIgnoredDuplicatePIDs(declaration);
  if (!declarations->save(terminal)) return exitCode::kReported;
  terminal.print(QStringLiteral("Stored: %1 tracks are no duplicates of one another (%2)")
                     .arg(pids.size())
                     .arg(pids.join(QStringLiteral(", "))));
  return exitCode::kDone;
}
