#include "bridge/LibraryObject.h"

#include <QFileInfo>
#include <QOperatingSystemVersion>
#include <algorithm>
#include <mutex>
#include <vector>

#include "bridge/LibraryFileSearch.h"
#include "bridge/MusicApplication.h"
#include "platform/FileAddress.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/TopLevelDirectories.h"

namespace {

constexpr double kReloadLimitSeconds = 60.0;
constexpr double kReloadStepSeconds = 0.25;
constexpr double kWithoutFileSeconds = 5.0;

struct State {
  std::mutex guard;
  // Guarded by guard.
  LibraryFramework *object = nullptr;
  bool tried = false;
  bool waiting = false;
  std::optional<Date> dirty;
  bool searchLogged = false;
  QString loggedProblem;

  /// Held while the common parent is worked out.
  std::mutex parentGuard;
  std::optional<QString> commonParent;
};

State &state() {
  static State one;
  return one;
}

double now() {
  return platform().clock->now().seconds;
}

/// The library's own file in use; null if there is none.
QString libraryFile() {
  const QString mediaPath = iTunesLibInterface::musicLibraryMediaPath();
  const LibraryFileSearch search(mediaPath);
  {
    const std::lock_guard held(state().guard);
    if (state().searchLogged) return search.mostRecent;
    state().searchLogged = true;
  }
  BMLog("[ITLI] MostRecentlyModifiedLibraryPath %@: [%@] amongst:\n%@", mediaPath, search.mostRecent,
        search.candidates.join(u'\n'));
  return search.mostRecent;
}

/// Waits until the library's file, which may be unknown, is as new as this program's last change.
void waitForFile(LibraryFramework &object, const QString &file, Date dirty) {
  const auto isWritten = [&](const std::optional<Date> &date) { return date && *date >= dirty; };
  if (isWritten(object.savedUntil())) return;
  if (file.isEmpty()) return platform().clock->sleep(dirty.seconds + kWithoutFileSeconds - now());
  while (now() <= dirty.seconds + kReloadLimitSeconds) {
    if (isWritten(platform().fileFacts->modificationDate(file))) return;
    platform().clock->sleep(kReloadStepSeconds);
  }
}

/// Each new one once: the question comes often.
void logProblem(const QString &problem) {
  std::unique_lock held(state().guard);
  if (problem.isEmpty() || state().loggedProblem == problem) return;
  state().loggedProblem = problem;
  held.unlock();
  BMLog("[iTunesLib] the library cannot be read: %@", problem);
}

LibraryFramework *openedLibrary() {
  LibraryFramework *const framework = platform().libraryFramework;
  const QString error =
      framework ? framework->open() : QStringLiteral("this platform has no library framework");
  if (error.isEmpty()) return framework;
  BMLog("[iTunesLib] nil: OS 10.%d, %@", qMax(QOperatingSystemVersion::current().minorVersion(), 0), error);
  return nullptr;
}

/// The paths of the tracks' files: all of them, or those of 3 seconds if these are enough; none if they
/// cannot be read.
std::vector<QString> somePaths(LibraryFramework &object, double begin) {
  constexpr size_t kEnough = 500;
  constexpr double kLongEnoughSeconds = 3.0;
  std::vector<QString> paths;
  const bool wereRead = object.visitMediaItems([&](const LibraryMediaItem &item) {
    if (item.locationType != LibraryMediaItem::LocationType::File) return true;
    const QString path = pathOfFileAddress(item.location);
    if (!path.isEmpty()) paths.push_back(path);
    return paths.size() < kEnough || now() - begin <= kLongEnoughSeconds;
  });
  return wereRead ? paths : std::vector<QString>();
}

QString commonParentOf(const std::vector<QString> &paths) {
  constexpr size_t kFewest = 51;
  if (paths.size() < kFewest) return {};
  const auto folders = BMUtility::topLevelDirectoriesFromPathsStopFragmentsMinComponents(paths, {}, 3);
  const auto fewer = [](const auto &a, const auto &b) { return a.second < b.second; };
  const auto best = std::max_element(folders.begin(), folders.end(), fewer);
  if (best == folders.end()) return {};
  const QString last = QStringLiteral("/Music");
  return best->first.endsWith(last) ? best->first.chopped(last.size()) : best->first;
}

}  // namespace

namespace iTunesLibInterface {

QString mediaAddressOf(LibraryFramework &object) {
  std::optional<QString> address = object.mediaFolderLocation();
  if (!address) address = object.musicFolderLocation();
  return address.value_or(QString());
}

LibraryFramework *libraryObject() {
  State &one = state();
  std::unique_lock held(one.guard);
  if (!one.tried) {
    one.tried = true;
    return one.object = openedLibrary();
  }
  // Nothing can be fresher for a library that cannot be read.
  if (one.waiting || !one.dirty || !one.object) return one.object;
  one.waiting = true;
  LibraryFramework *const object = one.object;
  const Date dirty = *one.dirty;
  held.unlock();
  const double begin = now();
  const QString file = libraryFile();
  waitForFile(*object, file, dirty);
  held.lock();
  one.waiting = false;
  // What is changed from here on is not in what is read now.
  if (one.dirty == dirty) one.dirty.reset();
  held.unlock();
  object->reloadData();
  BMLog("[iTunesLib] waited %.1f seconds before reloading (%.1f) %@", now() - begin, now() - dirty.seconds,
        file);
  return object;
}

bool canAccessLibrary() {
  LibraryFramework *const object = libraryObject();
  if (!object) return false;
  if (!musicLibraryMediaPath().isNull()) return true;
  const auto playlists = object->allPlaylists();
  if (playlists && !playlists->empty()) return true;
  logProblem(object->problem());
  return false;
}

void reloadLibrary() {
  State &one = state();
  std::unique_lock held(one.guard);
  LibraryFramework *const object = one.object;
  held.unlock();
  if (object) object->reloadData();
}

void dirtyLibrary() {
  const Date date = platform().clock->now();
  const std::lock_guard held(state().guard);
  state().dirty = date;
}

QString mediaFolderURL() {
  if (iTunesInterface::musicApplication().isNewSystem) return {};
  LibraryFramework *const object = libraryObject();
  return object ? mediaAddressOf(*object) : QString();
}

QString musicLibraryMediaPath() {
  const QString path = pathOfFileAddress(mediaFolderURL());
  return path.isEmpty() ? QString() : path;
}

QString musicLibraryMostCommonParentMediaPath() {
  State &one = state();
  LibraryFramework *const object = libraryObject();
  const std::lock_guard held(one.parentGuard);
  if (one.commonParent || !object) return one.commonParent.value_or(QString());
  const double begin = now();
  const std::vector<QString> paths = somePaths(*object, begin);
  // A library that has not been filled yet, or could not be read, says nothing of the next hour.
  if (paths.empty()) return {};
  one.commonParent = commonParentOf(paths);
  BMLog("[ITLI] musicLibraryMostCommonMediaPath (%d/%ld items, %.2f secs):\n %@", paths.size(),
        object->mediaItemCount(), now() - begin, *one.commonParent);
  return *one.commonParent;
}

QString musicLibraryFolder() {
  if (!libraryObject()) return {};
  const QString file = libraryFile();
  return file.isNull() ? QString() : QFileInfo(file).path();
}

void reset() {
  State &one = state();
  const std::scoped_lock held(one.guard, one.parentGuard);
  one.object = nullptr;
  one.tried = one.waiting = one.searchLogged = false;
  one.loggedProblem.clear();
  one.dirty.reset();
  one.commonParent.reset();
}

}  // namespace iTunesLibInterface
