#include "ctl/NamesCommand.h"

#include "ctl/ScanReport.h"
#include "ctl/ScanRun.h"

bool NamesCommand::report(ScanRun &run, const Options &options, Terminal &terminal) const {
  return ScanReport(run.application().state(), ProblemTab::Names).print(options, terminal);
}
