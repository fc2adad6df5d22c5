#include "ctl/NamesCommand.h"

#include "ctl/ScanReport.h"
#include "program/Application.h"

bool NamesCommand::report(Application &application, const Options &options, Terminal &terminal) const {
  return ScanReport(application.state(), ProblemTab::Names).print(options, terminal);
}
