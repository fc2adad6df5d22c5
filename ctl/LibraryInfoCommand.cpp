#include "ctl/LibraryInfoCommand.h"

#include "ctl/LibrarySummary.h"
#include "ctl/Options.h"
#include "ctl/Session.h"

int LibraryInfoCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({Options::json()}, {QStringLiteral("--library")});
  QString error;
  if (!options.parse(arguments, 0, &error)) return wrongUse(error, terminal);
  const Session session(Session::LogAtEnd::StaysText);
  const auto library = OpenedLibrary::open(options.value(QStringLiteral("--library")), terminal);
  if (!library) return exitCode::kReported;
  const LibrarySummary summary = LibrarySummary::of(*library);
  options.wantsJson() ? summary.printJson(terminal) : summary.print(terminal);
  return exitCode::kDone;
}
