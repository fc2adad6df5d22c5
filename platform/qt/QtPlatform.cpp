#include "platform/qt/QtPlatform.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

Folders standardFolders() {
  Folders folders;
  folders.home = QDir::homePath();
  folders.applicationSupport = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  folders.temporary = QDir::tempPath();
  folders.caches = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
  folders.music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
  return folders;
}

QString standardPreferenceFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/tallyfen"_qs;
}

QString standardResourceFolder() {
  const QString program = QCoreApplication::applicationDirPath();
  const QString candidates[] = {program + u"/../share/tallyfen/resources"_qs, program + u"/../resources"_qs,
                                QStringLiteral(TALLYFEN_RESOURCE_FOLDER)};
  for (const QString &candidate : candidates) {
    // A build tree has a folder of that name too, which holds no tables.
    if (QFileInfo(candidate + u"/strings"_qs).isDir()) return QDir::cleanPath(candidate);
  }
  return {};
}

QtPlatform::QtPlatform(const BundleInformation &bundle, const Folders &folders,
                       const QString &preferenceFolder)
    : preferences(preferenceFolder, &propertyLists) {
  current.clock = &clock;
  current.mainLoop = &mainLoop;
  current.preferences = &preferences;
  current.propertyLists = &propertyLists;
  current.unicode = &unicode;
  current.workspace = &workspace;
  current.fileFacts = &fileFacts;
  current.images = &images;
  current.folders = folders;
  current.bundle = bundle;
  if (bundle.resourceFolder.isEmpty()) current.bundle.resourceFolder = standardResourceFolder();
  setPlatform(current);
}
