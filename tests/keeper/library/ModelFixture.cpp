#include "tests/keeper/library/ModelFixture.h"

#include <QDir>
#include <QDirIterator>

#include "tools/demo/M4aWriter.h"
#include "tools/demo/Mp3Writer.h"

void ModelFixture::expectAll(const std::vector<Case> &cases) {
  for (const auto &[statements, result] : cases) {
    EXPECT_EQ(keeper.tell(statements), result) << statements.toStdString();
  }
}

QString ModelFixture::makeSong(const QString &relative, const SongTags &tags, int seconds) {
  const bool isM4a = relative.endsWith(u".m4a");
  return writeFile(relative,
                   (isM4a ? makeM4a(tags, 128, seconds * 1000) : makeMp3(tags, 128, seconds * 1000)).bytes);
}

SongTags ModelFixture::tagsOf(const QString &name, const QString &artist, const QString &album, int track) {
  SongTags tags;
  tags.name = name;
  tags.artist = artist;
  tags.album = album;
  tags.track = track;
  return tags;
}

QStringList ModelFixture::filesBelow(const QString &relative) const {
  const QDir top(folder(relative));
  QStringList found;
  QDirIterator walk(top.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (walk.hasNext()) found.append(top.relativeFilePath(walk.next()));
  found.sort();
  return found;
}
