#include "ctl/Declarations.h"

#include "ctl/MediaFolder.h"
#include "ctl/UserSettings.h"
#include "values/Keys.h"

namespace {

const QString kLibrary = QStringLiteral("--library");
const QString kMedia = QStringLiteral("--media");

}  // namespace

QStringList Declarations::optionNames() {
  return {kLibrary, kMedia};
}

QString Declarations::usage() {
  return QStringLiteral("[--library FILE] [--media DIR]");
}

std::unique_ptr<Declarations> Declarations::open(const Options &options, Terminal &terminal) {
  if (!isMediaFolderUsable(options.value(kMedia), terminal)) return nullptr;
  std::unique_ptr<Declarations> opened(new Declarations(terminal));
  const bool good = opened->openLibrary(options.value(kLibrary), options.value(kMedia), terminal);
  return good ? std::move(opened) : nullptr;
}

bool Declarations::openLibrary(const QString &library, const QString &media, Terminal &terminal) {
  const std::optional<OpenedLibrary> opened = OpenedLibrary::open(library, terminal);
  if (!opened) return false;
  setMediaFolder(media);
  state.library.mMusicLibrary = opened->root;
  for (const DictionaryEntry &entry : opened->root.value(keys::Tracks).toDictionary()) {
    const Dictionary &track = entry.value.toDictionary();
    const QString &pid = track.value(keys::PersistentID).toText();
    if (!pid.isEmpty()) tracks.insert(pid.toUpper(), track);
  }
  // Their key follows the media folder, which is a setting of this run alone.
  state.ignoredDuplicates.ignoredDuplicatePIDsArray();
  return true;
}

bool Declarations::save(Terminal &terminal) {
  session.useUserSettings();
  userSettings::ensureFirstValues(terminal);
  state.ignoredDuplicates.writeIgnoredDuplicatePIDs();
  return userSettings::save(terminal);
}
