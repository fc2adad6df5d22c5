#include "bridge/LibraryFileSearch.h"

#include <QFileInfo>

#include "platform/Platform.h"

namespace {

constexpr double kOldestSeconds = 172800.0;
constexpr double kLatestSeconds = 7200.0;

/// A file, or a folder that the platform shows as one.
bool isFile(const QString &path) {
  const QFileInfo info(path);
  return info.isFile() || (info.exists() && platform().fileFacts->isPackage(path));
}

QStringList candidatesBelow(const QString &base) {
  QStringList found;
  for (const QString &folder : {QStringLiteral("Music"), QStringLiteral("iTunes"), QString()}) {
    for (const QString &name : {QStringLiteral("Music Library"), QStringLiteral("iTunes Library")}) {
      for (const QString &extension : {QStringLiteral(".musiclibrary"), QStringLiteral(".itl"), QString()}) {
        const QString path =
            QStringLiteral("%1/%2/%3").arg(base, folder, name).replace(QStringLiteral("//"), u"/"_qs) +
            extension;
        if (isFile(path)) found.append(path);
      }
    }
  }
  return found;
}

}  // namespace

LibraryFileSearch::LibraryFileSearch(const QString &mediaPath) {
  QStringList bases;
  if (!mediaPath.isEmpty()) bases = QStringList{mediaPath, QFileInfo(mediaPath).path()};
  if (!platform().folders.music.isEmpty()) bases.append(platform().folders.music);
  bases.removeDuplicates();
  for (const QString &base : bases) candidates += candidatesBelow(base);

  const double now = platform().clock->now().seconds;
  double best = now - kOldestSeconds;
  for (const QString &path : candidates) {
    const std::optional<Date> modified = platform().fileFacts->modificationDate(path);
    if (!modified || modified->seconds <= best || modified->seconds >= now + kLatestSeconds) continue;
    mostRecent = path;
    best = modified->seconds;
  }
}
