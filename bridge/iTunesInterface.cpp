#include "bridge/iTunesInterface.h"

namespace iTunesInterface {

const MusicApplication &musicApplication() {
  static const MusicApplication application{QStringLiteral("iTunes"), QStringLiteral("com.apple.iTunes"),
                                            QStringLiteral("com.apple.iTunes"),
                                            QStringLiteral("Database Location"), false};
  return application;
}

QString musicAppName() {
  return musicApplication().name;
}

QString musicAppIdentifier() {
  return musicApplication().identifier;
}

bool haveBridge() {
  return false;
}

bool isMusicAppRunning() {
  return true;
}

bool isMusicAppInstalled() {
  return true;
}

std::optional<QString> versionString() {
  return std::nullopt;
}

int iTunesMajorVersion() {
  return 0;
}

void writeLibraryNow() {}

void dirtyLibrary() {}

bool haveDirectLibraryAccess() {
  return false;
}

QString musicLibraryMediaPath() {
  return {};
}

QString musicLibraryMostCommonParentMediaPath() {
  return {};
}

QString pathOfCurrentlyPlayingTrack() {
  return {};
}

void pausePlaying() {}

void resumePlaying() {}

std::optional<QString> refreshAndGetPathOfSongWithPID(const QString &) {
  return std::nullopt;
}

}  // namespace iTunesInterface
