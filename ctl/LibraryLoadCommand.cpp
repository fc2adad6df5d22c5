#include "ctl/LibraryLoadCommand.h"

#include "ctl/JsonWriter.h"
#include "ctl/OpenedLibrary.h"
#include "ctl/Options.h"
#include "ctl/RowText.h"
#include "ctl/Session.h"
#include "platform/Platform.h"
#include "values/Keys.h"

int LibraryLoadCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({Options::json()}, {QStringLiteral("--library")});
  QString error;
  if (!options.parse(arguments, 0, &error)) return wrongUse(error, terminal);
  const Session session(Session::LogAtEnd::StaysText);
  const double begin = platform().clock->now().seconds;
  const auto library = OpenedLibrary::open(options.value(QStringLiteral("--library")), terminal);
  if (!library) return exitCode::kReported;
  const double seconds = platform().clock->now().seconds - begin;
  const qsizetype tracks = library->root.value(keys::Tracks).toDictionary().size();
  const qsizetype playlists = library->root.value(keys::Playlists).toArray().size();
  const QString road = library->isDirect ? QStringLiteral("direct") : QStringLiteral("file");
  if (!options.wantsJson()) {
    terminal.print(QStringLiteral("%1 and %2 in %3 seconds (%4: %5)")
                       .arg(rowText::counted(tracks, "track", "tracks"),
                            rowText::counted(playlists, "playlist", "playlists"))
                       .arg(seconds, 0, 'f', 2)
                       .arg(road, printable(library->path)));
    return exitCode::kDone;
  }
  JsonWriter json(terminal.out);
  json.beginObject();
  json.member(u"road", road);
  json.member(u"path", library->path);
  json.member(u"tracks", qint64(tracks));
  json.member(u"playlists", qint64(playlists));
  json.member(u"seconds", seconds);
  json.endObject();
  json.endLine();
  return exitCode::kDone;
}
