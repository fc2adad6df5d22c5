#include "ctl/OpenedLibrary.h"

#include <QFile>
#include <QFileInfo>

#include "app/library/LibraryFile.h"
#include "app/library/LibraryLocation.h"
#include "platform/FileAddress.h"
#include "platform/Platform.h"
#include "platform/keeper/KeeperWorkspace.h"
#include "values/Keys.h"

namespace {

/// From here on the library is a file, whatever could be read directly.
void useFileOnly() {
  Platform fileOnly = platform();
  fileOnly.libraryFramework = nullptr;
  setPlatform(fileOnly);
  iTunesLibInterface::reset();
}

/// Where the library lies that is read directly.
QString directFolder() {
  LibraryFramework *const library = iTunesLibInterface::libraryObject();
  return library ? pathOfFileAddress(library->musicFolderLocation().value_or(QString())) : QString();
}

/// What the music application does with its library. Commands that only look have none among their services,
/// but it may run all the same.
LibraryActivity activityNow() {
  if (platform().scriptHost) return platform().workspace->libraryActivity();
  const KeeperPlace place = KeeperPlace::ofUser(platform().folders.temporary);
  return KeeperWorkspace(platform().workspace, place, nullptr).libraryActivity();
}

/// Tells if the music application is still taking its library in, so that a look would find a part of it; and
/// if it could not do so, in which case the look finds what there is.
bool isStillImporting(Terminal &terminal) {
  const LibraryActivity activity = activityNow();
  if (!activity.problem.isEmpty()) {
    terminal.say(QStringLiteral("%1 could not take in its library: %2")
                     .arg(iTunesInterface::musicAppName(), printable(activity.problem)));
  }
  if (activity.state != LibraryActivity::State::Importing) return false;
  const QString of = activity.total > 0 ? QStringLiteral(" of %1").arg(activity.total) : QString();
  terminal.say(QStringLiteral("%1 is still taking in its library (%2%3 tracks); try again when it is done")
                   .arg(iTunesInterface::musicAppName())
                   .arg(activity.done)
                   .arg(of));
  return true;
}

bool chooseLibraryFile(const QString &given, Terminal &terminal) {
  const QFileInfo info(given);
  if (!given.isEmpty() && !info.isFile()) {
    const QString what = QString::fromLatin1(info.exists() ? "is no file" : "does not exist");
    terminal.say(QStringLiteral("the library \"%1\" %2").arg(printable(given), what));
    return false;
  }
  if (given.isEmpty() && isStillImporting(terminal)) return false;
  if (!given.isEmpty()) useFileOnly();
  iTunesInterface::setMusicLibraryXMLPath(given.isEmpty() ? QString() : info.absoluteFilePath());
  if (iTunesInterface::canGetMusicLibrary()) return true;
  terminal.say(QStringLiteral("no music library found; name its file with --library FILE"));
  return false;
}

/// A library that was cut off was read as far as it goes.
void warnIfCutOff(const QString &path, Terminal &terminal) {
  constexpr qint64 kEndBytes = 256;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.peek(6) == "bplist") return;
  file.seek(qMax<qint64>(0, file.size() - kEndBytes));
  if (file.readAll().trimmed().endsWith("</plist>")) return;
  terminal.say(QStringLiteral("the library \"%1\" ends in the middle; what comes before was read")
                   .arg(printable(path)));
}

}  // namespace

bool chooseLibraryToScan(const QString &given, Terminal &terminal) {
  if (!chooseLibraryFile(given, terminal)) return false;
  if (!iTunesInterface::haveDirectLibraryAccess())
    warnIfCutOff(iTunesInterface::currentMusicLibraryXMLPath(), terminal);
  return true;
}

std::optional<OpenedLibrary> OpenedLibrary::open(const QString &given, Terminal &terminal) {
  if (!chooseLibraryFile(given, terminal)) return std::nullopt;
  OpenedLibrary opened;
  opened.isDirect = iTunesInterface::haveDirectLibraryAccess();
  opened.path = opened.isDirect ? directFolder() : iTunesInterface::currentMusicLibraryXMLPath();
  opened.date = iTunesInterface::currentMusicLibraryDate();
  QString error;
  opened.root = iTunesInterface::getMusicLibraryDictionaryWithError(&error);
  if (error.isEmpty() && opened.root.value(keys::Tracks).toDictionary().isNull())
    error = QStringLiteral("it holds no tracks");
  if (!error.isEmpty()) {
    terminal.say(QStringLiteral("the library \"%1\" cannot be read: %2").arg(printable(opened.path), error));
    return std::nullopt;
  }
  if (!opened.isDirect) warnIfCutOff(opened.path, terminal);
  return opened;
}
