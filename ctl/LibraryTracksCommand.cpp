#include "ctl/LibraryTracksCommand.h"

#include "app/PrefsController.h"
#include "app/library/LibraryPreparation.h"
#include "ctl/JsonWriter.h"
#include "ctl/OpenedLibrary.h"
#include "ctl/Options.h"
#include "ctl/Session.h"
#include "support/Preferences.h"
#include "text/Simplified.h"
#include "values/Keys.h"

int LibraryTracksCommand::run(const QStringList &arguments, Terminal &terminal) {
  Options options({Options::json()}, {QStringLiteral("--library")});
  QString error;
  if (!options.parse(arguments, 0, &error)) return wrongUse(error, terminal);
  if (!options.wantsJson()) return wrongUse(QStringLiteral("this list comes as --json only"), terminal);
  const Session session(Session::LogAtEnd::StaysText);
  const auto library = OpenedLibrary::open(options.value(QStringLiteral("--library")), terminal);
  if (!library) return exitCode::kReported;
  const Dictionary resources = PrefsController::resources();
  setSimplifiersDictionaryRemoveTrailingS(resources.value(keys::simplifiers).toDictionary(),
                                          prefs::isTrue(prefs::ignorePlurals));
  TrackFilter filter(resources);
  JsonWriter json(terminal.out);
  for (const Value &track : prepareLibrary(library->root, filter, {}, {}).sortedTracks) {
    json.beginObject();
    for (const Key key : {keys::PersistentID, keys::simplifiedArtist, keys::simplifiedAlbum, keys::Path})
      json.member(key.text(), track.toDictionary().value(key));
    json.endObject();
    json.endLine();
  }
  return exitCode::kDone;
}
