#include "app/LaunchChecks.h"

#include <QDir>
#include <QFileInfo>

#include "app/library/LibraryLocation.h"
#include "app/state/AppState.h"
#include "app/state/Commands.h"
#include "app/state/LocalizedAlert.h"
#include "bridge/LocalizedMessage.h"
#include "bridge/iTunesInterface.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "support/Preferences.h"

namespace {

constexpr qint64 kLeastFreeBytes = 524'288'000;
constexpr qsizetype kManyTracks = 300'000;

bool isLow(qint64 freeBytes) {
  return freeBytes >= 1 && freeBytes < kLeastFreeBytes;
}

bool isLibraryFileName(const QString &name) {
  return name.startsWith(QStringLiteral("iTunes")) &&
         name.endsWith(QStringLiteral(".xml"), Qt::CaseInsensitive);
}

/// True for the folders in which the music application keeps media unless it is told otherwise.
bool isUsualParent(const QString &parent) {
  for (const char16_t *usual : {u"/Music/Media", u"/iTunes/iTunes Media", u"/iTunes/iTunes Music"}) {
    if (parent.startsWith(platform().folders.music + QString::fromUtf16(usual))) return true;
  }
  return false;
}

}  // namespace

LaunchChecks::~LaunchChecks() {
  platform().mainLoop->stopTimer(loadTimer);
  platform().mainLoop->stopTimer(folderTimer);
}

void LaunchChecks::later(MainLoop::TimerID &timer, double seconds, MainLoop::Task task) {
  platform().mainLoop->stopTimer(timer);
  timer = platform().mainLoop->startTimer(seconds, false, std::move(task));
}

void LaunchChecks::checkForPresenceOfiTunes() {
  if (iTunesInterface::isMusicAppInstalled()) return;
  const Alert alert =
      localizedAlert(QStringLiteral("NoiTunesTitle"), localizedMessage(QStringLiteral("NoiTunesMessage")),
                     {QStringLiteral("NoiTunesQuit"), QStringLiteral("NoiTunesContinue")}, true);
  if (state.view.runAlert(alert) == 0) state.commands->quitNow();
}

bool LaunchChecks::warnIfLowOnScratchSpace() {
  const FileFacts &files = *platform().fileFacts;
  const qint64 boot = files.freeBytes(QStringLiteral("/"));
  qint64 media = 0;
  if (!isLow(boot)) {
    const QString folder = musicLibraryMediaFolderWithFallbacks(state);
    if (folder.startsWith(QStringLiteral("/Volumes/"))) media = files.freeBytes(folder);
    if (!isLow(media)) return false;
  }
  BMLog("!! Low disk space (boot:%uMB media:%uMB)", quint32(boot >> 20), quint32(media >> 20));
  const Alert alert =
      localizedAlert(QStringLiteral("LowSpaceTitle"), localizedMessage(QStringLiteral("LowSpaceMessage")),
                     {QStringLiteral("LowSpaceQuit"), QStringLiteral("LowSpaceContinue")}, true);
  if (state.view.runAlert(alert) == 0) state.commands->quitNow();
  return true;
}

void LaunchChecks::warnAboutTrackCount(qsizetype tracks) {
  if (tracks < kManyTracks) return;
  BMLog("!! MANY tracks (has:%ld threshold:%ld)", tracks, kManyTracks);
  if (prefs::isTrue(prefs::noWarnAboutLibSize)) return BMLog(" ... warning dialog disabled");
  const Alert alert = localizedAlert(
      QStringLiteral("LibSizeTitle"), localizedMessage(QStringLiteral("LibSizeMessage"), tracks),
      {QStringLiteral("LibSizeContinue"), QStringLiteral("LibSizeQuit"), QStringLiteral("LibSizeDoNotWarn")});
  const int button = state.view.runAlert(alert);
  if (button == 1) state.commands->quitNow();
  if (button == 2) prefs::set(prefs::noWarnAboutLibSize, true);
}

bool LaunchChecks::isReachable() const {
  const QString folder = iTunesInterface::currentMusicLibraryPathFromPrefs();
  // Where nothing names a folder the usual ones are searched.
  if (folder.isEmpty()) return !iTunesInterface::currentMusicLibraryXMLPath().isEmpty();
  const QFileInfo info(folder);
  if (info.isDir() && !(info.isReadable() && info.isExecutable())) return true;
  const QStringList names = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  if (std::any_of(names.begin(), names.end(), isLibraryFileName)) return true;
  BMLog("!!! warnIfLibraryInaccessible no iTunes xml in %@ [%@]", folder, names.join(QStringLiteral(", ")));
  return false;
}

bool LaunchChecks::warnIfLibraryInaccessible() {
  if (!iTunesInterface::haveBridge() || iTunesInterface::haveDirectLibraryAccess()) return false;
  const QString title = QStringLiteral("NoLibraryTitle");
  if (iTunesInterface::musicApplication().isNewSystem) {
    state.view.runAlert(localizedAlert(title, localizedMessage(QStringLiteral("NoLibraryMessageGeneric")),
                                       {QStringLiteral("NoLibraryQuit")}));
    return true;
  }
  if (isReachable()) return false;
  const Alert alert = localizedAlert(title, localizedMessage(QStringLiteral("NoLibraryMessageXMLMissing")),
                                     {QStringLiteral("NoLibraryTryAgain"), QStringLiteral("NoLibraryQuit")});
  if (state.view.runAlert(alert) == 0) {
    BMLog(" ... check again.");
    state.view.showProblemWindow();
    constexpr double kDelaySeconds = 0.5;
    later(loadTimer, kDelaySeconds,
          [this] { state.commands->doGetDefaultLibraryWhenNewerThan(std::nullopt); });
  } else {
    BMLog(" ... just quit.");
    state.commands->customTerminate();
  }
  return true;
}

void LaunchChecks::checkMediaFolder() {
  if (state.mIsEnding || !iTunesInterface::haveBridge()) return;
  if (!iTunesInterface::musicLibraryMediaPath().isNull()) return;
  if (prefs::isTrue(prefs::suppressUntrustedMediaFolderAlert)) return;
  if (!prefs::value(prefs::manualMediaPath).isNull()) return;
  const QString parent = iTunesInterface::musicLibraryMostCommonParentMediaPath();
  if (isUsualParent(parent))
    return BMLog("Uncertain media location, but we'll accept typical parent: %@", parent);
  constexpr double kDelaySeconds = 1.0;
  later(folderTimer, kDelaySeconds, [this] { showUntrustedMediaFolderAlert(); });
}

void LaunchChecks::showUntrustedMediaFolderAlert() {
  if (state.mIsEnding || prefs::isTrue(prefs::suppressUntrustedMediaFolderAlert)) return;
  const bool isOlder = iTunesInterface::musicAppIdentifier() == QStringLiteral("com.apple.iTunes") ||
                       !iTunesInterface::musicApplication().isNewSystem;
  QString message = localizedMessage(isOlder ? QStringLiteral("UntrustedMediaFolderInformativeiTunes")
                                             : QStringLiteral("UntrustedMediaFolderInformativeMusic"));
  const QString folder = musicLibraryMediaFolderWithFallbacks(state);
  if (!folder.isEmpty()) {
    message += QStringLiteral("\n\n%1\n\n     %2\n")
                   .arg(localizedMessage(QStringLiteral("UntrustedMediaFolderInformativeShowPath")), folder);
  }
  const Alert alert = localizedAlert(
      QStringLiteral("UntrustedMediaFolderMessage"), message,
      {QStringLiteral("UntrustedMediaFolderChoose"), QStringLiteral("UntrustedMediaFolderIgnore"),
       QStringLiteral("UntrustedMediaFolderDoNotRemind")});
  constexpr int kFirstResponse = 1000;
  const int button = state.view.runAlert(alert);
  BMLog("showUntrustedMediaFolderAlert response = %ld", kFirstResponse + button);
  if (button == 0) state.commands->chooseNewMediaFolder();
  if (button == 2) prefs::set(prefs::suppressUntrustedMediaFolderAlert, true);
}
