#include "app/state/LibraryChanges.h"

#include <QFileInfo>
#include <QScopeGuard>

#include "app/library/LibraryLocation.h"
#include "app/library/MappedFile.h"
#include "app/library/PropertyListReader.h"
#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Preferences.h"
#include "values/Keys.h"

namespace {

double now() {
  return platform().clock->now().seconds;
}

/// Where the music application says that a track's file is; null if it does not.
QString pathByApplication(const QString &pid) {
  const std::optional<QString> answer = iTunesInterface::refreshAndGetPathOfSongWithPID(pid);
  return answer && !answer->startsWith(QStringLiteral("error:")) ? *answer : QString();
}

bool fileExists(const QString &path) {
  return !path.isEmpty() && QFileInfo::exists(path);
}

/// Parses a library file. Only the system's parser is guarded: while it works the settings name our own, and
/// a crash leaves it so.
Value parsePlaylists(QByteArrayView bytes, QString *error) {
  const auto parse = [&](bool trySystemFirst) {
    return BMUtility::mutablePropertyListFromDataTrySystemFirstErrorDescription(bytes, trySystemFirst, error);
  };
  if (prefs::isTrue(prefs::noSystemDeserialize)) return parse(false);
  prefs::set(prefs::noSystemDeserialize, true);
  prefs::synchronize();
  const auto restore = qScopeGuard([] {
    prefs::remove(prefs::noSystemDeserialize);
    prefs::synchronize();
  });
  return parse(true);
}

/// Removes the rows of a list for which the test holds, from the last on; true if any went.
bool removeRows(AppState &state, ProblemTab tab, const std::function<bool(const Dictionary &)> &isToGo) {
  const Array &list = state.lists[tab];
  const ObjectLock lock = state.threadLockForObject(list);
  const std::lock_guard held(*lock);
  bool any = false;
  for (qsizetype row = list.size() - 1; row >= 0; --row) {
    if (!isToGo(list.at(row).toDictionary())) continue;
    list.removeAt(row);
    any = true;
  }
  return any;
}

void forgetUntrusted(AppState &state, const QString &pid) {
  const Array untrusted = state.untrustedLocations.untrustedLocationPIDsArray();
  const ObjectLock lock = state.threadLockForObject(untrusted);
  const std::lock_guard held(*lock);
  for (qsizetype place = untrusted.size() - 1; place >= 0; --place) {
    if (untrusted.at(place).toText() == pid) untrusted.removeAt(place);
  }
}

void noteUntrusted(AppState &state, const QString &pid) {
  const Array untrusted = state.untrustedLocations.untrustedLocationPIDsArray();
  const ObjectLock lock = state.threadLockForObject(untrusted);
  const std::lock_guard held(*lock);
  for (const Value &known : untrusted) {
    if (known.toText() == pid) return;
  }
  untrusted.append(pid);
}

}  // namespace

std::optional<Date> LibraryChanges::lastModified() {
  const std::lock_guard held(modifiedGuard);
  return state.library.mLastLibraryModifiedDate;
}

void LibraryChanges::setPlaylists(const Array &playlists) {
  const std::lock_guard held(modifiedGuard);
  state.library.mMusicLibraryPlaylists = playlists;
}

Array LibraryChanges::freshPlaylists() {
  const std::lock_guard held(modifiedGuard);
  return state.library.mMusicLibraryPlaylists;
}

Array LibraryChanges::playlists() {
  const std::lock_guard held(modifiedGuard);
  const Array &fresh = state.library.mMusicLibraryPlaylists;
  return fresh.isNull() ? state.library.mMusicLibrary.value(keys::Playlists).toArray() : fresh;
}

bool LibraryChanges::updateJustPlaylists() {
  const double begin = now();
  iTunesInterface::writeLibraryNow();
  const Array direct = iTunesInterface::getDirectPlaylists();
  if (!direct.isNull() && !direct.isEmpty()) {
    setPlaylists(direct);
    BMLog("updateJustPlaylists direct (%ld playlists) in %.2f seconds", direct.size(), now() - begin);
    return true;
  }
  const std::optional<Date> modified = lastModified();
  const std::optional<Date> current = iTunesInterface::currentMusicLibraryDate();
  if (!modified || (current && *modified <= *current)) {
    BMLog("updateJustPlaylists already current");
    return true;
  }
  const QString path = iTunesInterface::currentMusicLibraryXMLPath();
  if (path.isEmpty() || !waitForNewerFile()) return false;
  return readPlaylists(path, begin);
}

bool LibraryChanges::waitForNewerFile() {
  constexpr double kLimitSeconds = 40.0;
  constexpr double kStepSeconds = 0.2;
  const double begin = now();
  const std::optional<Date> modified = lastModified();
  for (;;) {
    const std::optional<Date> current = iTunesInterface::currentMusicLibraryDate();
    if (current && (!modified || *current > *modified)) return true;
    if (now() - begin >= kLimitSeconds) break;
    platform().clock->sleep(kStepSeconds);
  }
  BMLog("!!! updateJustPlaylists gave up waiting for xml to change");
  return false;
}

bool LibraryChanges::readPlaylists(const QString &path, double begin) {
  QString error;
  MappedFile file;
  if (!file.open(path, &error)) {
    BMLog("!!! updateJustPlaylists no xml data @ %@", path);
    return false;
  }
  const Value root = parsePlaylists(file.bytes(), &error);
  if (root.isNull() || !error.isEmpty()) {
    BMLog("!!! updateJustPlaylists can't read xml @ %@: %@", path, error);
    return false;
  }
  setPlaylists(root.toDictionary().value(keys::Playlists).toArray());
  BMLog("updateJustPlaylists success in %.1f seconds", now() - begin);
  return true;
}

void LibraryChanges::modifiedLibrary() {
  const std::lock_guard held(modifiedGuard);
  state.library.mLastLibraryModifiedDate = platform().clock->now();
  iTunesInterface::dirtyLibrary();
}

void LibraryChanges::didModifyTrackWithInfo(const TrackChange &change) {
  platform().mainLoop->postAndWait([this, &change] { modifyOnMainThread(change); });
}

void LibraryChanges::didRemoveTrackWithDict(const Dictionary &track) {
  if (track.isNull()) return;
  platform().mainLoop->postAndWait([&] {
    modifyOnMainThread({track, state.view.currentTab(), true, QString()});
  });
}

void LibraryChanges::didMoveTrackWithDict(const Dictionary &track) {
  if (track.isNull() || track.value(keys::PersistentID).toText().isEmpty()) return;
  platform().mainLoop->postAndWait([&] { moveOnMainThread(track); });
}

void LibraryChanges::modifyOnMainThread(const TrackChange &change) {
  const double begin = now();
  modifiedLibrary();
  const QString pid = change.track.value(keys::PersistentID).toText();
  QString path;
  if (!change.isGone && !pid.isEmpty()) {
    path = change.track.value(keys::Path).toText();
    if (!fileExists(path)) {
      const QString told = pathByApplication(pid);
      if (!told.isEmpty()) path = told;
    }
  }
  const bool hasMoved = !path.isEmpty() && !change.formerPath.isEmpty() && path != change.formerPath;
  if (change.isGone && !pid.isEmpty()) forgetUntrusted(state, pid);
  bool any = false;
  if (hasMoved && change.tab != ProblemTab::Orphans &&
      removeRows(state, ProblemTab::Orphans, [&](const Dictionary &row) {
        return row.value(keys::Path).toText() == change.formerPath;
      })) {
    any = true;
    state.view.reloadTable(ProblemTab::Orphans);
  }
  const bool holdsNoLonger = !pid.isEmpty() && (change.isGone || fileExists(path));
  if (change.tab != ProblemTab::Missing && holdsNoLonger &&
      removeRows(state, ProblemTab::Missing,
                 [&](const Dictionary &row) { return row.value(keys::PersistentID).toText() == pid; })) {
    any = true;
    state.view.reloadTable(ProblemTab::Missing);
  }
  constexpr double kWorthTellingSeconds = 0.5;
  const double took = now() - begin;
  if (took > kWorthTellingSeconds)
    BMLog("[+] didModify(d:%d) %@ %@ in %.1f secs", int(change.isGone), pid, path, took);
  if (any) state.commands->updateProblemNumbers();
}

void LibraryChanges::moveOnMainThread(const Dictionary &track) {
  const QString pid = track.value(keys::PersistentID).toText();
  if (!fileExists(track.value(keys::Path).toText())) {
    const QString told = pathByApplication(pid);
    if (!told.isEmpty()) {
      track.set(keys::Path, told);
      noteUntrusted(state, pid);
    }
  }
  modifyOnMainThread({track, state.view.currentTab(), false, QString()});
}
