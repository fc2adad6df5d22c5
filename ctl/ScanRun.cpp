#include "ctl/ScanRun.h"

#include "ctl/MediaFolder.h"
#include "ctl/SettingTable.h"
#include "support/Preferences.h"

ScanRun::ScanRun(const LoopRunner &loopRunner, Terminal &terminal)
    : runLoop(loopRunner), lines(terminal), shown(terminal), put(shown) {
  shown.onCancel = [this] { put.controller().doCancelOperation("tallyfenctl"); };
  put.controller().onTerminate = [this] { shown.applicationEnds(); };
  put.savedState().isUsed = false;
}

bool ScanRun::scan(const ScanRequest &request) {
  for (const QString &complaint : settings::complaints()) lines.say(complaint);
  // The first values come first: a first launch would remove what is set before them.
  put.controller().prefsController().awakeFromNib();
  setMediaFolder(request.media);
  for (const auto &[key, value] : request.settings) prefs::set(key, value);
  prefs::set(prefs::noScanAtStartup, false);
  put.controller().awakeFromNib();
  wait([this] { return shown.isOver(); });
  shown.endProgressSheet();
  return !shown.hasFailed();
}

void ScanRun::ensureMarks() {
  // A scan whose groups are loose leaves the marks to the user.
  if (put.automark().lastChoices().empty()) put.automark().doAutomarkFromPreferences();
}

void ScanRun::wait(const std::function<bool()> &done) {
  runLoop(done, [this] { shown.interrupt(); });
}
