#include "ctl/ScanningCommand.h"

#include "app/library/LibraryLocation.h"
#include "ctl/MediaFolder.h"
#include "ctl/OpenedLibrary.h"
#include "ctl/Session.h"
#include "ctl/SettingTable.h"
#include "ctl/TerminalView.h"
#include "program/Application.h"
#include "support/Preferences.h"

namespace {

void applySettings(const ScanRequest &request, Application &application, Terminal &terminal) {
  for (const QString &complaint : settings::complaints()) terminal.say(complaint);
  // The first values come first: a first launch would remove what is set before them.
  application.controller().prefsController().awakeFromNib();
  setMediaFolder(request.media);
  for (const auto &[key, value] : request.settings) prefs::set(key, value);
  prefs::set(prefs::noScanAtStartup, false);
}

}  // namespace

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
  TerminalView view(terminal);
  Application application(view);
  view.onCancel = [&application] { application.controller().doCancelOperation("tallyfenctl"); };
  applySettings(request, application, terminal);
  application.controller().awakeFromNib();
  runLoop([&view] { return view.isOver(); }, [&view] { view.interrupt(); });
  view.endProgressSheet();
  if (view.hasFailed()) return exitcode::kReported;
  const bool hasProblems = report(application, options, terminal);
  if (application.state().library.mMusicLibrarySortedTracks.isEmpty())
    terminal.say(QStringLiteral("the library holds no songs"));
  if (view.isInterrupted()) terminal.say(QStringLiteral("cancelled"));
  return view.isInterrupted() || hasProblems ? exitcode::kReported : exitcode::kDone;
}
