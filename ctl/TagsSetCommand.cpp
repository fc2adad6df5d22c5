#include "ctl/TagsSetCommand.h"

#include "ctl/Interrupts.h"
#include "ctl/JsonWriter.h"
#include "ctl/Options.h"
#include "ctl/Session.h"
#include "ctl/SongCopy.h"
#include "ctl/TagFacts.h"

namespace {

/// What became of a change.
struct Outcome {
  /// The file that holds the tag now.
  QString path;
  bool ok = false;
  /// Null on success, and where the writer gives no reason.
  QString error;
  QString writeVersion;
};

/// Changes a song's tag in memory, then in its file.
void change(SongFile &song, const QString &out, const TagEdits &edits, Outcome &outcome) {
  const Interrupts interrupts;
  AudioInfoTag *tag = song.infotag();
  if (!tag) {
    outcome.error = QStringLiteral("it has no tag that can be read");
    return;
  }
  if (!edits.apply(*tag, &outcome.error)) return;
  outcome.writeVersion = tag->writeVersion();
  SongCopy copy;
  if (!out.isEmpty()) {
    outcome.error = copy.make(song.path(), out);
    if (!outcome.error.isNull()) return;
    song.setPath(out);
  }
  if (interrupts.came()) {
    outcome.error = QStringLiteral("cancelled");
    return;
  }
  outcome.ok = song.writeToOriginalPathWithErrorRefreshiTunes(&outcome.error, false);
  if (!outcome.ok) return;
  copy.keep();
  outcome.path = song.path();
  outcome.error = QString();
}

Outcome change(const QString &file, const QString &out, const TagEdits &edits) {
  Outcome outcome;
  outcome.path = file;
  outcome.error = tagFacts::whyUnreadable(file);
  if (!outcome.error.isNull()) return outcome;
  const SongFilePtr song = SongFile::songWithPath(file);
  if (song) {
    change(*song, out, edits, outcome);
  } else {
    outcome.error = QStringLiteral("it is too small to be a song");
  }
  return outcome;
}

void writeJson(const Outcome &outcome, Terminal &terminal) {
  const auto orNull = [](const QString &text) { return text.isNull() ? Value() : Value(text); };
  JsonWriter json(terminal.out);
  json.beginObject();
  json.key(u"tag");
  TagFacts(outcome.path).writeTag(json);
  json.member(u"ok", outcome.ok);
  json.member(u"error", orNull(outcome.error));
  json.member(u"writeVersion", orNull(outcome.writeVersion));
  json.endObject();
  json.endLine();
}

}  // namespace

int TagsSetCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options(TagEdits::flagNames() + QStringList{Options::json()}, TagEdits::valueNames());
  TagEdits edits;
  QString error;
  if (!options.parse(arguments, 2, &error) || !edits.take(options, &error)) return wrongUse(error, terminal);
  const QString file = options.operands().value(0);
  if (file.isEmpty()) return wrongUse(QStringLiteral("name a FILE"), terminal);
  const Session session(Session::LogAtEnd::StaysText);
  const Outcome outcome = change(file, options.operands().value(1), edits);
  const bool asJson = options.wantsJson();
  if (asJson) writeJson(outcome, terminal);
  if (outcome.ok) {
    if (!asJson) terminal.print(TagFacts(outcome.path).text());
    return exitCode::kDone;
  }
  const QString reason =
      outcome.error.isEmpty() ? QStringLiteral("this file's tag cannot be written") : outcome.error;
  return reported(QStringLiteral("\"%1\" was not changed: %2").arg(printable(file), printable(reason)),
                  terminal);
}
