#include "ctl/MarksCommand.h"

#include "ctl/MarksReport.h"
#include "ctl/ScanRun.h"

bool MarksCommand::report(ScanRun &run, const Options &options, Terminal &terminal) const {
  run.ensureMarks();
  const MarksReport marks(run.application().state().lists.mDuplicateSongDicts,
                          run.application().automark().lastChoices(), AutomarkRules::fromPreferences());
  options.wantsJson() ? marks.printJson(terminal) : marks.print(terminal);
  return marks.hasGroups();
}
