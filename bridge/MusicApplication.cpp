#include "bridge/MusicApplication.h"

#include <QOperatingSystemVersion>
#include <QSysInfo>

#include "platform/KeeperIdentity.h"
#include "platform/Platform.h"

namespace iTunesInterface {

namespace {

constexpr int kNewSystemMajor = 10, kNewSystemMinor = 15;

QString nameOfTheNewApplication(const std::function<QString(const QString &)> &displayName) {
  QString name = displayName(QStringLiteral("/System/Applications/Music.app"));
  if (name.endsWith(u".app")) name.chop(4);
  return name.isEmpty() ? QStringLiteral("Music") : name;
}

MusicApplication ofThisMachine() {
  const QOperatingSystemVersion version = QOperatingSystemVersion::current();
  const Workspace *workspace = platform().workspace;
  return musicApplicationOf(
      QSysInfo::kernelType(), version.majorVersion(), version.minorVersion(),
      [&](const QString &path) { return workspace ? workspace->displayNameOfApplication(path) : QString(); });
}

}  // namespace

MusicApplication musicApplicationOf(const QString &kernel, int majorVersion, int minorVersion,
                                    const std::function<QString(const QString &)> &displayName) {
  const QString libraryKey = QStringLiteral("Database Location");
  if (kernel != u"darwin") {
    const QString identifier = keeperIdentity::kIdentifier;
    return {keeperIdentity::kName, identifier, identifier, libraryKey, false};
  }
  if (std::pair(majorVersion, minorVersion) < std::pair(kNewSystemMajor, kNewSystemMinor)) {
    const QString identifier = QStringLiteral("com.apple.iTunes");
    return {QStringLiteral("iTunes"), identifier, identifier, libraryKey, false};
  }
  const QString identifier = QStringLiteral("com.apple.Music");
  return {nameOfTheNewApplication(displayName), identifier, identifier,
          QStringLiteral("media-folder-bookmark"), true};
}

const MusicApplication &musicApplication() {
  static const MusicApplication application = ofThisMachine();
  return application;
}

QString musicAppName() {
  return musicApplication().name;
}

QString musicAppIdentifier() {
  return musicApplication().identifier;
}

bool isMusicAppInstalled() {
  return true;
}

bool haveBridge() {
  return platform().scriptHost != nullptr;
}

}  // namespace iTunesInterface
