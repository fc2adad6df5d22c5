#include "support/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/Platform.h"
#include "support/BMLog.h"

bool createMissingDirectories(const QString &path) {
  const QStringList parts = path.split(u'/');
  for (qsizetype count = 2; count <= parts.size(); ++count) {
    const QString leading = parts.first(count).join(u'/');
    if (leading.isEmpty()) continue;
    const QFileInfo info(leading);
    if (info.exists()) {
      if (!info.isDir()) return false;
    } else if (!QDir().mkpath(leading)) {
      return false;
    }
  }
  return true;
}

Dictionary pathMetadata(const QString &path) {
  return platform().fileFacts ? platform().fileFacts->metadata(path) : Dictionary();
}

QString bytesDescription(const QString &text) {
  QStringList units;
  for (const QChar unit : text) units += QString::number(unit.unicode());
  return units.join(u' ');
}

QString BMUtility::uniqueWritablePathWithSuffix(const QString &suffix) {
  constexpr int kTries = 1000;
  const auto start = qint64(platform().clock->now().seconds);
  for (qint64 number = start; number < start + kTries; ++number) {
    const QString path = formatText(QStringLiteral("%@/tmp%d%@"), {platform().folders.home, number, suffix});
    QFile file(path);
    // NewOnly also refuses a link that leads nowhere.
    if (file.exists() || !file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) continue;
    file.close();
    if (!file.remove()) BMLog("uniqueWritablePath @ %@ created but not deleted", path);
    return path;
  }
  return {};
}
