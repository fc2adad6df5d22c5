#include "ctl/MarksCommand.h"

#include "ctl/MarksReport.h"
#include "program/Application.h"

bool MarksCommand::report(Application &application, const Options &options, Terminal &terminal) const {
  // A scan whose groups are loose leaves the marks to the user.
  if (application.automark().lastChoices().empty()) application.automark().doAutomarkFromPreferences();
  const MarksReport marks(application.state().lists.mDuplicateSongDicts, application.automark().lastChoices(),
                          AutomarkRules::fromPreferences());
  options.has(QStringLiteral("--json")) ? marks.printJson(terminal) : marks.print(terminal);
  return marks.hasGroups();
}
