#include "ctl/TagsCommand.h"

#include <limits>

#include "ctl/Interrupts.h"
#include "ctl/JsonWriter.h"
#include "ctl/Options.h"
#include "ctl/ProgressBar.h"
#include "ctl/Session.h"
#include "ctl/TagFacts.h"

namespace {

/// Lists that are shorter are over before a bar can be read.
constexpr qsizetype kLongList = 20;

/// Tells of one file. False, with a line for the user in `complaint`, for a file without a tag.
bool tellOf(const QString &path, bool asJson, Terminal &terminal, QString *complaint) {
  const TagFacts facts(path);
  *complaint = facts.complaint();
  if (facts.isReadable() && asJson) {
    JsonWriter json(terminal.out);
    facts.write(json);
    json.endLine();
  } else if (facts.isReadable()) {
    terminal.print(facts.text());
  }
  return complaint->isNull();
}

}  // namespace

int TagsCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({Options::json()}, {});
  QString error;
  if (!options.parse(arguments, std::numeric_limits<qsizetype>::max(), &error))
    return wrongUse(error, terminal);
  if (options.operands().isEmpty()) return wrongUse(QStringLiteral("name a FILE"), terminal);
  const Session session(Session::LogAtEnd::StaysText);
  return tell(options.operands(), options.wantsJson(), terminal);
}

int TagsCommand::tell(const QStringList &files, bool asJson, Terminal &terminal) const {
  const Interrupts interrupts;
  const bool showsProgress = terminal.errIsTerminal && files.size() >= kLongList;
  ProgressBar bar(terminal);
  bar.setIndeterminate(false);
  bar.setMaximum(double(files.size()));
  int code = exitCode::kDone;
  for (qsizetype i = 0; i < files.size() && terminal.out.good(); ++i) {
    if (interrupts.came()) {
      bar.clear();
      return reported(QStringLiteral("cancelled"), terminal);
    }
    bar.clear();
    QString complaint;
    if (!tellOf(files[i], asJson, terminal, &complaint)) {
      terminal.say(QStringLiteral("Can't read \"%1\": %2").arg(printable(files[i]), complaint));
      code = exitCode::kReported;
    }
    if (!showsProgress) continue;
    // Results may go to the same screen: they come whole, with the bar below them.
    terminal.out.flush();
    bar.setText(QStringLiteral("%1 of %2").arg(i + 1).arg(files.size()));
    bar.setValue(double(i + 1));
  }
  bar.clear();
  return code;
}
