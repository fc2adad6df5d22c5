#include "ctl/ScanningCommand.h"

#include "ctl/MediaFolder.h"
#include "ctl/OpenedLibrary.h"
#include "ctl/ScanRun.h"
#include "ctl/Session.h"

int ScanningCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options(ScanRequest::flagNames() + ownFlagNames(), ScanRequest::valueNames() + ownValueNames());
  ScanRequest request;
  QString error;
  if (!options.parse(arguments, 0, &error) || !request.take(options, &error))
    return wrongUse(error, terminal);
  error = complaintAbout(options);
  if (!error.isEmpty()) return wrongUse(error, terminal);
  if (!isMediaFolderUsable(request.media, terminal)) return exitCode::kReported;
  const Session session(Session::LogAtEnd::Compressed);
  if (!chooseLibraryToScan(request.library, terminal)) return exitCode::kReported;
  return scan(request, options, terminal);
}

int ScanningCommand::scan(const ScanRequest &request, const Options &options, Terminal &terminal) const {
  ScanRun run(runLoop, terminal);
  if (!run.scan(request)) return exitCode::kReported;
  const bool hasProblems = report(run, options, terminal);
  if (!run.hasSongs()) terminal.say(QStringLiteral("the library holds no songs"));
  if (run.isInterrupted()) terminal.say(QStringLiteral("cancelled"));
  return run.isInterrupted() || hasProblems ? exitCode::kReported : exitCode::kDone;
}
