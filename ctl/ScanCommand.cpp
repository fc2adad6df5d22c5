#include "ctl/ScanCommand.h"

#include "ctl/ScanReport.h"
#include "ctl/ScanRun.h"

namespace {

const QString kProblem = QStringLiteral("--problem");

std::optional<ProblemTab> onlyProblem(const Options &options) {
  for (const ProblemTab tab : kProblemTabs) {
    if (identifierOfTab(tab) == options.value(kProblem)) return tab;
  }
  return std::nullopt;
}

}  // namespace

QString ScanCommand::complaintAbout(const Options &options) const {
  if (!options.has(kProblem) || onlyProblem(options)) return {};
  return QStringLiteral("no problem is called \"%1\"").arg(printable(options.value(kProblem)));
}

bool ScanCommand::report(ScanRun &run, const Options &options, Terminal &terminal) const {
  const ScanReport found(run.application().state(), onlyProblem(options));
  return found.print(options, terminal);
}
