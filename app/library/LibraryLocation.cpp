#include "app/library/LibraryLocation.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <mutex>

#include "app/library/LibraryFile.h"
#include "platform/FileAddress.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/TopLevelDirectories.h"
#include "values/Keys.h"

namespace {

constexpr double kOldestFileSeconds = 2.592e6;
constexpr qint64 kProbeBytes = 1000;

const QByteArray kLibraryMark = QByteArrayLiteral("<key>Music Folder</key>");

/// A search has many steps; the log tells them once.
struct SearchState {
  std::mutex guard;
  QString chosenByHand;
  bool reported = false;
  QString loggedPrefsFolder;
};

SearchState &search() {
  static SearchState state;
  return state;
}

/// Looks at both ends of a file of some size first, then at all of it.
bool holdsLibraryMark(const QString &path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return false;
  const qint64 size = file.size();
  if (size >= kProbeBytes) {
    if (file.read(kProbeBytes).contains(kLibraryMark)) return true;
    if (file.seek(size - kProbeBytes) && file.read(kProbeBytes).contains(kLibraryMark)) return true;
    file.seek(0);
  }
  if (const uchar *bytes = size > 0 ? file.map(0, size) : nullptr) {
    return QByteArrayView(bytes, size).contains(kLibraryMark);
  }
  return file.readAll().contains(kLibraryMark);
}

/// The path of a file address, or the text itself if it is a whole path; else empty.
QString pathOfText(const QString &text) {
  if (text.startsWith(QStringLiteral("file:"))) return pathOfFileAddress(text);
  return text.startsWith(u'/') ? text : QString();
}

QString withoutLastComponent(const QString &path) {
  return path.left(path.lastIndexOf(u'/'));
}

bool hasXmlExtension(const QString &name) {
  return name.endsWith(QStringLiteral(".xml"), Qt::CaseInsensitive);
}

void logPrefsFolderOnce(const QString &folder, const char *source) {
  std::lock_guard held(search().guard);
  if (search().loggedPrefsFolder == folder) return;
  search().loggedPrefsFolder = folder;
  BMLog("library folder from %s: [%@]", source, folder);
}

QStringList candidateFolders() {
  const QString &home = platform().folders.home;
  QStringList folders;
  const QString fromPrefs = iTunesInterface::currentMusicLibraryPathFromPrefs();
  if (!fromPrefs.isEmpty()) folders.append(fromPrefs);
  if (iTunesInterface::musicApplication().isNewSystem) folders.append(home + QStringLiteral("/Music/Music"));
  folders.append(home + QStringLiteral("/Music/iTunes"));
  folders.append(home + QStringLiteral("/Documents/iTunes"));
  folders.removeDuplicates();
  return folders;
}

/// The best file found so far, and the report of how it was found.
struct Search {
  QString best;
  Date date;
  QString report = QStringLiteral("mostRecentMusicLibraryPath:\r\n");

  void visitFolder(const QString &folder, int pass) {
    bool anyUsable = false;
    for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
      if (!hasXmlExtension(name)) continue;
      anyUsable = true;
      visitFile(folder + u'/' + name, name, pass);
    }
    if (!anyUsable) report += formatText(QStringLiteral(" #%d: 0 (no XML in %@)\r\n"), {pass, folder});
  }

  void visitFile(const QString &path, const QString &name, int pass) {
    const bool isLibrary = holdsLibraryMark(path);
    const std::optional<Date> modified = platform().fileFacts->modificationDate(path);
    const bool isCandidate = modified ? *modified > date : pass == 1 && best.isEmpty();
    const QString when = modified ? modified->toIsoText() : QStringLiteral("no date");
    report += formatText(QStringLiteral(" #%d: %d %@ - %@\r\n"), {pass, int(isLibrary), when, path});
    if (!isCandidate || !(isLibrary || name.startsWith(QStringLiteral("iTunes ")))) return;
    best = path;
    if (modified) date = *modified;
  }
};

}  // namespace

namespace iTunesInterface {

QString currentMusicLibraryPathFromPrefs() {
  const QString direct = iTunesLibInterface::musicLibraryFolder();
  if (!direct.isNull()) {
    logPrefsFolderOnce(direct, "direct access");
    return direct;
  }
  const MusicApplication &application = musicApplication();
  PreferenceStore &store = *platform().preferences;
  const QString named =
      pathOfText(store.value(application.preferenceDomain, application.libraryKey).toText());
  if (!named.isEmpty() && QFileInfo::exists(named)) {
    const QString folder = withoutLastComponent(named);
    logPrefsFolderOnce(folder, "the music application's settings");
    if (!folder.isEmpty()) return folder;
  }
  const Value recent =
      store.value(QStringLiteral("com.apple.iApps"), QStringLiteral("iTunesRecentDatabases")).toArray().at(0);
  QString folder = pathOfText(recent.toText());
  if (hasXmlExtension(folder)) folder = withoutLastComponent(folder);
  logPrefsFolderOnce(folder, "the recent libraries");
  return folder;
}

QString mostRecentMusicLibraryPath(Date *date) {
  Search found;
  found.date = Date{platform().clock->now().seconds - kOldestFileSeconds};
  {
    std::lock_guard held(search().guard);
    found.best = search().chosenByHand;
  }
  if (!found.best.isEmpty()) {
    if (date) *date = platform().fileFacts->modificationDate(found.best).value_or(found.date);
    return found.best;
  }
  const QStringList folders = candidateFolders();
  for (int pass = 0; pass < 2 && found.best.isEmpty(); ++pass) {
    for (const QString &folder : folders) found.visitFolder(folder, pass);
  }
  std::unique_lock held(search().guard);
  if (!search().reported) {
    search().reported = true;
    held.unlock();
    BMLog("%@--> %@", found.report, found.best);
  }
  if (date) *date = found.date;
  return found.best;
}

QString currentMusicLibraryXMLPath() {
  return mostRecentMusicLibraryPath(nullptr);
}

void setMusicLibraryXMLPath(const QString &path) {
  std::lock_guard held(search().guard);
  search().chosenByHand = path;
  search().reported = false;
}

std::optional<Date> currentMusicLibraryDate() {
  if (haveDirectLibraryAccess()) return platform().clock->now();
  const QString path = currentMusicLibraryXMLPath();
  return path.isEmpty() ? std::nullopt : platform().fileFacts->modificationDate(path);
}

bool canGetMusicLibrary() {
  return haveDirectLibraryAccess() || !currentMusicLibraryXMLPath().isEmpty();
}

QString mediaFolderPathFromDictionaryLibraryPath(const Dictionary &given, const QString &givenPath) {
  QString error;
  const Dictionary library = given.isNull() ? getMusicLibraryDictionaryWithError(&error) : given;
  QString libraryFolder = givenPath.isEmpty() ? musicLibraryPath() : givenPath;
  if (libraryFolder.isEmpty()) libraryFolder = mostRecentMusicLibraryPath(nullptr);
  const Value &named = library.contains(keys::MusicFolder) ? library.value(keys::MusicFolder)
                                                           : library.value(keys::MediaFolder);
  const QString path = pathOfFileAddress(named.toText());
  const QString volumes = QStringLiteral("/Volumes/");
  if (path.isEmpty() || !libraryFolder.startsWith(volumes) || path.startsWith(volumes)) return path;
  return volumes + libraryFolder.section(u'/', 2, 2) + path;
}

QStringList topLevelDirectoriesFromTracks(const Array &tracks) {
  std::vector<QString> paths;
  for (const Value &track : tracks) {
    const QString &path = track.toDictionary().value(keys::Path).toText();
    if (!path.isEmpty()) paths.push_back(path);
  }
  QStringList folders;
  const QStringList fragments{QStringLiteral("/iTunes/")};
  for (const auto &[folder, count] :
       BMUtility::topLevelDirectoriesFromPathsStopFragmentsMinComponents(paths, fragments, 3)) {
    folders.append(folder);
  }
  return folders;
}

}  // namespace iTunesInterface
