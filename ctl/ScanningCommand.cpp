#include "ctl/ScanningCommand.h"

#include "app/library/LibraryLocation.h"
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
  if (!isMediaFolderUsable(request.media, terminal)) return exitcode::kReported;
  const Session session(Session::LogAtEnd::Compressed);
  if (!chooseLibraryFile(request.library, terminal)) return exitcode::kReported;
  if (!iTunesInterface::haveDirectLibraryAccess())
    warnIfCutOff(iTunesInterface::currentMusicLibraryXMLPath(), terminal);
  return scan(request, options, terminal);
}

int ScanningCommand::scan(const ScanRequest &request, const Options &options, Terminal &terminal) const {
  ScanRun run(runLoop, terminal);
  if (!run.scan(request)) return exitcode::kReported;
  const bool hasProblems = report(run.application(), options, terminal);
  if (!run.hasSongs()) terminal.say(QStringLiteral("the library holds no songs"));
  if (run.isInterrupted()) terminal.say(QStringLiteral("cancelled"));
  return run.isInterrupted() || hasProblems ? exitcode::kReported : exitcode::kDone;
}
