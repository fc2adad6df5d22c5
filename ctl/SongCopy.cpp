#include "ctl/SongCopy.h"

#include <QFile>
#include <QFileInfo>

SongCopy::~SongCopy() {
  if (!copy.isEmpty()) QFile::remove(copy);
}

QString SongCopy::make(const QString &from, const QString &to) {
  const QString head = QStringLiteral("Can't write \"%1\": ").arg(to);
  if (QFileInfo::exists(to) || QFileInfo(to).isSymLink())
    return head + QStringLiteral("there is something already");
  QFile source(from);
  const qint64 size = source.size();
  if (!source.copy(to)) return head + source.errorString();
  copy = to;
  if (QFileInfo(to).size() != size) return head + QStringLiteral("the copy is not whole");
  QFile::setPermissions(to, QFile::permissions(to) | QFile::WriteOwner);
  return {};
}
