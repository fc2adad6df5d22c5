#include "app/LibraryLoader.h"

#include "app/LaunchChecks.h"
#include "app/PrefsController.h"
#include "app/library/LibraryFile.h"
#include "app/library/LibraryLocation.h"
#include "app/library/LibraryPreparation.h"
#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "app/state/Operation.h"
#include "bridge/LocalizedMessage.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Preferences.h"
#include "text/Simplified.h"
#include "values/Keys.h"

namespace {

constexpr double kWaitStepSeconds = 0.5;
constexpr double kWaitLimitSeconds = 120.0;
/// A file must be this much newer to count as written anew.
constexpr double kNewerSeconds = 0.5;

/// "/Volumes/NAME/" for a path on a volume, else empty.
QString volumePrefixOf(const QString &path) {
  const bool onVolume = path.startsWith(QStringLiteral("/Volumes/")) && path.count(u'/') >= 2;
  return onVolume ? QStringLiteral("/Volumes/") + path.section(u'/', 2, 2) + u'/' : QString();
}

/// Why a file cannot be read as text; empty if it can or none is named.
QString reasonNoText(const QString &path) {
  if (path.isEmpty()) return {};
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return file.errorString();
  return QUtf8StringView(file.readAll()).isValidUtf8() ? QString() : QStringLiteral("not UTF-8 text");
}

}  // namespace

LibraryLoader::LibraryLoader(AppState &appState, Operation &currentOperation,
                             PrefsController &prefsController, LaunchChecks &launchChecks)
    : state(appState),
      operation(currentOperation),
      prefsOwner(prefsController),
      checks(launchChecks),
      importWait(appState, currentOperation) {}

void LibraryLoader::doGetDefaultLibraryWhenNewerThan(std::optional<Date> date) {
  if (state.mIsEnding) return;
  if (state.mMusicLibraryBusy) return BMLog("!!! library asked for while it is being loaded");
  iTunesInterface::writeLibraryNow();
  const bool waits = importWait.begin([this, date] {
    loadWhenNewerThan(date);
    if (waiting) std::exchange(waiting, nullptr)();
  });
  if (!waits) loadWhenNewerThan(date);
}

void LibraryLoader::whenLibraryIsWhole(std::function<void()> task) {
  if (!importWait.isWaiting()) return task();
  waiting = std::move(task);
}

void LibraryLoader::loadWhenNewerThan(std::optional<Date> date) {
  if (checks.warnIfLibraryInaccessible()) {
    operation.progressSheet().endProgressSheet();
    state.view.setCancelEnabled(true);
    return;
  }
  ProblemView &view = state.view;
  view.setProgressIndeterminate(true);
  view.setProgressText(localizedMessage(QStringLiteral("LoadingLibrary")));
  view.setProgressQuote(localizedMessage(QStringLiteral("QuoteLoadingLibrary")));
  view.setProgressSubText({});
  view.setCancelEnabled(false);
  operation.progressSheet().displayProgressSheet();
  if (date && !iTunesInterface::haveDirectLibraryAccess()) waitForLibraryNewerThan(*date);
  view.setProgressText(localizedMessage(QStringLiteral("LoadingLibrary")));
  view.setProgressQuote(localizedMessage(QStringLiteral("QuoteLoadingLibrary")));
  getLibraryAtPath({});
}

void LibraryLoader::waitForLibraryNewerThan(Date date) {
  BMLog("Waiting for library to change from %@", date);
  if (!iTunesInterface::canGetMusicLibrary()) return;
  state.view.setProgressText(localizedMessage(QStringLiteral("WaitiTunesMessage")));
  state.view.setProgressQuote(
      localizedMessage(QStringLiteral("QuoteWaitiTunesMessage"), iTunesInterface::musicAppName()));
  const double begin = platform().clock->now().seconds;
  for (;;) {
    const std::optional<Date> current = currentMusicLibraryDate();
    const double waited = platform().clock->now().seconds - begin;
    if (current && current->seconds - date.seconds > kNewerSeconds) {
      BMLog("... finished waiting, after %.1f secs XML changed to %@.", waited, *current);
      return;
    }
    if (waited >= kWaitLimitSeconds) {
      BMLog("... GAVE UP waiting!");
      return;
    }
    platform().clock->sleep(kWaitStepSeconds);
  }
}

void LibraryLoader::getLibraryAtPath(const QString &path) {
  state.operation.mCompletedOperation = false;
  state.mMusicLibraryBusy = true;
  state.locks.clearAllLocks();
  setSimplifiersDictionaryRemoveTrailingS(
      PrefsController::resources().value(keys::simplifiers).toDictionary(),
      prefs::isTrue(prefs::ignorePlurals));
  state.library.mMusicLibrary = {};
  state.library.mMusicLibraryPlaylists = {};
  state.library.mMusicLibraryPaths = {};
  updateLibraryPrefsDisplay();
  const bool runs = state.workers.detach(QStringLiteral("getLibraryThreaded"),
                                         [this, path, overridePaths = state.library.mOverridePathsDict] {
                                           getLibraryThreaded(path, overridePaths);
                                         });
  if (runs) return;
  sendLibraryError(localizedMessage(QStringLiteral("NoThreadMessage")));
  platform().mainLoop->post(tasks.guarded([this] { finishedGettingLibrary({}); }));
}

void LibraryLoader::getLibraryThreaded(const QString &path, const QHash<QString, QString> &overridePaths) {
  const double begin = platform().clock->now().seconds;
  const Loaded loaded = loadGuarded(path, overridePaths);
  state.operation.mCompletedOperation = true;
  BMLog("... library loaded in %.1f seconds", platform().clock->now().seconds - begin);
  platform().mainLoop->post(tasks.guarded([this, loaded] { finishedGettingLibrary(loaded); }));
}

LibraryLoader::Loaded LibraryLoader::loadGuarded(const QString &path,
                                                 const QHash<QString, QString> &overridePaths) {
  // Whatever happens, the main thread has to hear of the end: the sheet of a load cannot be cancelled.
  QString what;
  try {
    return readLibrary(path, overridePaths);
  } catch (const std::exception &exception) {
    what = QString::fromUtf8(exception.what());
  } catch (...) {
    what = QStringLiteral("unknown exception");
  }
  BMLog("!!! EXCEPTION getLibraryThreaded: %@", what);
  sendLibraryError(QStringLiteral("'%1'").arg(what));
  return {};
}

LibraryLoader::Loaded LibraryLoader::readLibrary(const QString &path,
                                                 const QHash<QString, QString> &overridePaths) {
  const QString volumePrefix = volumePrefixOf(path);
  BMLog("Getting iTunes library (ignored xml:%@) (vol pref:%@)", path, volumePrefix);
  QString error;
  Loaded loaded;
  const Dictionary library = iTunesInterface::getMusicLibraryDictionaryWithError(&error);
  if (library.isNull() || !error.isEmpty()) {
    QString detail = QStringLiteral("'%1'").arg(error);
    const QString reason = reasonNoText(path);
    if (!reason.isEmpty()) detail += QStringLiteral("\n\n") + reason;
    sendLibraryError(detail);
    return loaded;
  }
  loaded.succeeded = true;
  loaded.date = currentMusicLibraryDate();
  loaded.library = library;
  TrackFilter filter(PrefsController::resources());
  BMLog(" ignoreKinds: [%@] substrings [%@]", filter.kinds(), filter.kindSubstrings());
  loaded.prepared = prepareLibrary(library, filter, overridePaths, volumePrefix);
  return loaded;
}

void LibraryLoader::sendLibraryError(const QString &detail) {
  platform().mainLoop->post(tasks.guarded([this, detail] { gotLibraryError(detail); }));
}

void LibraryLoader::gotLibraryError(const QString &detail) {
  if (state.mIsEnding) return;
  QString message = localizedMessage(QStringLiteral("BadLibraryMessage"));
  if (!detail.isEmpty()) message += QStringLiteral("\n\n") + detail;
  const QString title = QStringLiteral("BadLibraryTitle");
  state.view.runAlert({title,
                       localizedMessage(title),
                       message,
                       {localizedMessage(QStringLiteral("BadLibraryDefault"))},
                       true});
}

void LibraryLoader::finishedGettingLibrary(const Loaded &loaded) {
  if (state.mIsEnding) return;
  state.library.mMusicLibrary = loaded.library;
  state.library.mMusicLibraryPaths = loaded.prepared.paths;
  verdicts = loaded.prepared.verdicts;
  if (loaded.succeeded) {
    state.library.mLastLibraryDate = loaded.date;
    state.library.mMusicLibrarySortedTracks = loaded.prepared.sortedTracks;
  }
  const qsizetype tracks = state.library.mMusicLibrary.value(keys::Tracks).toDictionary().size();
  operation.progressSheet().endProgressSheet();
  state.view.setCancelEnabled(true);
  state.view.setProgressIndeterminate(false);
  BMLog("... %d tracks, music folder (manual:%d): [%@]", tracks,
        int(!prefs::text(prefs::manualMediaPath).isEmpty()), musicLibraryMediaFolderWithFallbacks(state));
  updateLibraryPrefsDisplay();
  state.view.setLibrarySongCount(localizedMessage(QStringLiteral("SongCount"), tracks));
  prefs::remove(prefs::busy);
  state.mMusicLibraryBusy = false;
  state.view.libraryDidLoad(tracks);
  if (tracks == 0) return prefsOwner.revealTabWithIdentifier(QStringLiteral("library"));
  if (state.commands->readState()) return state.commands->recoverFromReadState();
  checks.warnIfLowOnScratchSpace();
  if (!state.mIsEnding) checks.warnAboutTrackCount(tracks);
  if (!state.mIsEnding) state.commands->doFindProblems();
}

std::optional<Date> LibraryLoader::currentMusicLibraryDate() const {
  return iTunesInterface::currentMusicLibraryDate();
}

void LibraryLoader::updateLibraryPrefsDisplay() {
  state.view.setLibraryPaths(iTunesInterface::currentMusicLibraryPathFromPrefs(),
                             musicLibraryMediaFolderWithFallbacks(state));
  state.view.setLibrarySongCount({});
}
