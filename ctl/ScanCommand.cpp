#include "ctl/ScanCommand.h"

#include <QFileInfo>

#include "app/library/LibraryLocation.h"
#include "ctl/OpenedLibrary.h"
#include "ctl/Options.h"
#include "ctl/ScanReport.h"
#include "ctl/Session.h"
#include "ctl/SettingTable.h"
#include "ctl/TerminalView.h"
#include "program/Application.h"
#include "support/Preferences.h"

bool ScanCommand::parse(const QStringList &arguments, Request *request, QString *error) {
  Options options({QStringLiteral("--json"), QStringLiteral("--rows")},
                  {QStringLiteral("--library"), QStringLiteral("--media"), QStringLiteral("--pref"),
                   QStringLiteral("--problem")});
  if (!options.parse(arguments, 0, error)) return false;
  request->library = options.value(QStringLiteral("--library"));
  request->media = options.value(QStringLiteral("--media"));
  request->json = options.has(QStringLiteral("--json"));
  request->rows = options.has(QStringLiteral("--rows"));
  for (const QString &assignment : options.values(QStringLiteral("--pref"))) {
    std::pair<QString, Value> setting;
    if (!settings::parseAssignment(assignment, &setting.first, &setting.second, error)) return false;
    request->settings.push_back(std::move(setting));
  }
  if (!options.has(QStringLiteral("--problem"))) return true;
  const QString problem = options.value(QStringLiteral("--problem"));
  for (const ProblemTab tab : kProblemTabs) {
    if (identifierOfTab(tab) == problem) request->only = tab;
  }
  if (!request->only) *error = QStringLiteral("no problem is called \"%1\"").arg(printable(problem));
  return request->only.has_value();
}

int ScanCommand::run(const QStringList &arguments, Terminal &terminal) {
  Request request;
  QString error;
  if (!parse(arguments, &request, &error)) return wrongUse(error, terminal);
  if (!request.media.isEmpty() && !QFileInfo(request.media).isDir()) {
    terminal.say(QStringLiteral("the media folder \"%1\" does not exist").arg(printable(request.media)));
    return exitcode::kReported;
  }
  const Session session(Session::LogAtEnd::Compressed);
  if (!chooseLibraryFile(request.library, terminal)) return exitcode::kReported;
  warnIfCutOff(iTunesInterface::currentMusicLibraryXMLPath(), terminal);
  return scan(request, terminal);
}

void ScanCommand::applySettings(const Request &request, Application &application, Terminal &terminal) {
  for (const QString &complaint : settings::complaints()) terminal.say(complaint);
  // The first values come first: a first launch would remove what is set before them.
  application.controller().prefsController().awakeFromNib();
  if (!request.media.isEmpty())
    prefs::set(prefs::manualMediaPath, QFileInfo(request.media).absoluteFilePath());
  for (const auto &[key, value] : request.settings) prefs::set(key, value);
  prefs::set(prefs::noScanAtStartup, false);
}

int ScanCommand::scan(const Request &request, Terminal &terminal) const {
  TerminalView view(terminal);
  Application application(view);
  view.onCancel = [&application] { application.controller().doCancelOperation("tallyfenctl"); };
  applySettings(request, application, terminal);
  application.controller().awakeFromNib();
  runLoop([&view] { return view.isOver(); }, [&view] { view.interrupt(); });
  view.endProgressSheet();
  return report(request, application, view, terminal);
}

int ScanCommand::report(const Request &request, Application &application, const TerminalView &view,
                        Terminal &terminal) {
  const AppState &state = application.state();
  if (view.hasFailed()) return exitcode::kReported;
  const ScanReport found(state, request.only);
  request.json ? found.printJson(request.rows, terminal) : found.print(terminal);
  if (state.library.mMusicLibrarySortedTracks.isEmpty())
    terminal.say(QStringLiteral("the library holds no songs"));
  if (view.isInterrupted()) terminal.say(QStringLiteral("cancelled"));
  return view.isInterrupted() || found.hasProblems() ? exitcode::kReported : exitcode::kDone;
}
