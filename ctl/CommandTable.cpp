#include "ctl/CommandTable.h"

#include "ctl/IgnoreCommand.h"
#include "ctl/IgnoredCommand.h"
#include "ctl/InspectAutomarkCommand.h"
#include "ctl/InspectPlistCommand.h"
#include "ctl/InspectResourcesCommand.h"
#include "ctl/InspectTextCommand.h"
#include "ctl/KeeperCommand.h"
#include "ctl/LibraryInfoCommand.h"
#include "ctl/LibraryLoadCommand.h"
#include "ctl/LibraryTracksCommand.h"
#include "ctl/MarksCommand.h"
#include "ctl/MergeCommand.h"
#include "ctl/NamesCommand.h"
#include "ctl/PrefsCommand.h"
#include "ctl/ScanCommand.h"
#include "ctl/ScriptCommand.h"
#include "ctl/TagsCommand.h"
#include "ctl/TagsSetCommand.h"
#include "ctl/TagsStripCommand.h"
#include "ctl/TagsTreeCommand.h"
#include "platform/Platform.h"

namespace {

bool asksForHelp(const QString &argument) {
  return argument == QStringLiteral("--help") || argument == QStringLiteral("-h");
}

}  // namespace

CommandTable::CommandTable() {
  commands.push_back(std::make_unique<ScanCommand>());
  commands.push_back(std::make_unique<MarksCommand>());
  commands.push_back(std::make_unique<MergeCommand>());
  commands.push_back(std::make_unique<NamesCommand>());
  commands.push_back(std::make_unique<IgnoreCommand>());
  commands.push_back(std::make_unique<IgnoredCommand>());
  commands.push_back(std::make_unique<LibraryInfoCommand>());
  commands.push_back(std::make_unique<LibraryLoadCommand>());
  commands.push_back(std::make_unique<LibraryTracksCommand>());
  commands.push_back(std::make_unique<PrefsCommand>());
  commands.push_back(std::make_unique<KeeperCommand>());
  commands.push_back(std::make_unique<ScriptCommand>());
  commands.push_back(std::make_unique<TagsCommand>());
  commands.push_back(std::make_unique<TagsSetCommand>());
  commands.push_back(std::make_unique<TagsStripCommand>());
  commands.push_back(std::make_unique<TagsTreeCommand>());
  commands.push_back(std::make_unique<InspectResourcesCommand>());
  commands.push_back(std::make_unique<InspectPlistCommand>());
  commands.push_back(std::make_unique<InspectTextCommand>());
  commands.push_back(std::make_unique<InspectAutomarkCommand>());
}

int CommandTable::run(const QStringList &arguments, Terminal &terminal) const {
  const int code = dispatch(arguments, terminal);
  terminal.out.flush();
  if (terminal.out.good()) return code;
  return reported(QStringLiteral("the output could not be written"), terminal);
}

Command *CommandTable::find(const QStringList &arguments) const {
  Command *found = nullptr;
  qsizetype most = 0;
  for (const auto &command : commands) {
    const QStringList words = command->name().split(u' ');
    if (words.size() <= most || arguments.first(qMin(words.size(), arguments.size())) != words) continue;
    found = command.get();
    most = words.size();
  }
  return found;
}

int CommandTable::dispatch(const QStringList &arguments, Terminal &terminal) const {
  if (arguments.isEmpty()) {
    printHelp(terminal.err);
    return exitCode::kWrongUse;
  }
  if (arguments.first() == QStringLiteral("help") || asksForHelp(arguments.first()))
    return help(arguments.sliced(1), terminal);
  if (arguments.first() == QStringLiteral("--version")) {
    terminal.print(QStringLiteral("tallyfenctl %1").arg(platform().bundle.shortVersion));
    return exitCode::kDone;
  }
  Command *command = find(arguments);
  if (!command) {
    terminal.say(QStringLiteral("no command \"%1\"")
                     .arg(printable(arguments.first(qMin<qsizetype>(2, arguments.size())).join(u' '))));
    terminal.err << "usage: tallyfenctl help [COMMAND]\n";
    return exitCode::kWrongUse;
  }
  const QStringList rest = arguments.sliced(command->name().count(u' ') + 1);
  if (!rest.isEmpty() && asksForHelp(rest.first())) return help(arguments, terminal);
  return command->run(rest, terminal);
}

int CommandTable::help(const QStringList &arguments, Terminal &terminal) const {
  if (arguments.isEmpty()) {
    printHelp(terminal.out);
    return exitCode::kDone;
  }
  bool found = false;
  for (const auto &command : commands) {
    if (find(arguments) != command.get() && command->name().section(u' ', 0, 0) != arguments.join(u' '))
      continue;
    terminal.print(QStringLiteral("usage: tallyfenctl ") +
                   (command->name() + u' ' + command->usage()).trimmed());
    terminal.print(QStringLiteral("  ") + command->help());
    found = true;
  }
  if (found) return exitCode::kDone;
  terminal.say(QStringLiteral("no command \"%1\"").arg(printable(arguments.join(u' '))));
  terminal.err << "usage: tallyfenctl help [COMMAND]\n";
  return exitCode::kWrongUse;
}

void CommandTable::printHelp(std::ostream &stream) const {
  stream << "usage: tallyfenctl COMMAND [OPTIONS]\n\n";
  for (const auto &command : commands) {
    const QString name = command->name().leftJustified(18);
    stream << "  " << (name + u' ' + command->help()).toStdString() << '\n';
  }
  stream << "  help [COMMAND]     tells how a command is used\n\n"
            "Exit code: 0 done, 1 problems found or a failure reported, 2 wrong use.\n";
}
