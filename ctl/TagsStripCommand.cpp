#include "ctl/TagsStripCommand.h"

#include <QFileInfo>

#include "audio/FileReader.h"
#include "ctl/Interrupts.h"
#include "ctl/Options.h"
#include "ctl/RowText.h"
#include "ctl/Session.h"
#include "ctl/SongCopy.h"
#include "ctl/TagFacts.h"

namespace {

bool beginsWithVersion24(const QString &path) {
  return FileReader(path).read(0, 4) == QByteArray("ID3\4");
}

/// Cuts off the tag. A line for the user on failure, else null.
QString strip(const QString &file, const QString &out) {
  const Interrupts interrupts;
  const QString why = tagFacts::whyUnreadable(file);
  if (!why.isNull()) return why;
  if (!beginsWithVersion24(file)) return QStringLiteral("it has no version 2.4 tag");
  SongCopy copy;
  if (!out.isEmpty()) {
    const QString failure = copy.make(file, out);
    if (!failure.isNull()) return failure;
  }
  if (interrupts.came()) return QStringLiteral("cancelled");
  if (!SongFile::removeID3v2TagFromFileAtPath(out.isEmpty() ? file : out))
    return QStringLiteral("the tag cannot be cut off");
  copy.keep();
  return {};
}

}  // namespace

int TagsStripCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({}, {});
  QString error;
  if (!options.parse(arguments, 2, &error)) return wrongUse(error, terminal);
  const QString file = options.operands().value(0), out = options.operands().value(1);
  if (file.isEmpty()) return wrongUse(QStringLiteral("name a FILE"), terminal);
  const Session session(Session::LogAtEnd::StaysText);
  const qint64 before = QFileInfo(file).size();
  const QString failure = strip(file, out);
  if (!failure.isNull()) {
    return reported(QStringLiteral("\"%1\" was not changed: %2").arg(printable(file), printable(failure)),
                    terminal);
  }
  const qint64 cut = before - QFileInfo(out.isEmpty() ? file : out).size();
  terminal.print(QStringLiteral("Cut off: ") + rowText::counted(cut, "byte", "bytes"));
  return exitCode::kDone;
}
