#include <fcntl.h>
#include <sys/stat.h>

#include <QFileInfo>
#include <QImage>

#include "platform/qt/QtFileFacts.h"
#include "platform/qt/QtImages.h"
#include "platform/qt/QtWorkspace.h"
#include "tests/fixtures/RecordingWorkspace.h"
#include "tests/fixtures/TestPlatform.h"

using DesktopAdapters = TestPlatform;

TEST_F(DesktopAdapters, TheModificationDateKeepsFractionsOfASecond) {
  const QString path = writeFile(u"file"_qs, "x");
  const timespec times[2] = {{1700000000, 0}, {1700000000, 123456789}};
  ASSERT_EQ(utimensat(AT_FDCWD, path.toUtf8().constData(), times, 0), 0);
  EXPECT_NEAR(fileFacts->modificationDate(path)->toUnix(), 1700000000.123456789, 1e-6);
  EXPECT_FALSE(fileFacts->modificationDate(path + u"x"_qs).has_value());
  EXPECT_TRUE(fileFacts->metadata(path).isNull());
}

TEST_F(DesktopAdapters, PicturesShrinkButNeverGrowAndABombIsUnreadable) {
  QImage small(40, 20, QImage::Format_ARGB32);
  small.fill(Qt::blue);
  small.save(folder(u"small.png"_qs));
  const QByteArray bytes = readFile(folder(u"small.png"_qs));
  const std::pair<QSize, QSize> cases[] = {
      {{100, 100}, {40, 20}}, {{20, 100}, {20, 10}}, {{100, 5}, {10, 5}}, {{1, 1}, {1, 1}}};
  for (const auto &[room, size] : cases) {
    const QByteArray icon = images->imageNoLargerThanSize(bytes, room.width(), room.height(), 0.5);
    EXPECT_EQ(QImage::fromData(icon).size(), size);
  }
  EXPECT_TRUE(images->imageNoLargerThanSize(bytes, 0, 10, 0.5).isEmpty());
  for (const qsizetype length : {0, 1, 30, 50}) {
    (void)images->imageNoLargerThanSize(bytes.left(length), 10, 10, 0.5);
  }
  // A bitmap whose header promises 30,000 by 30,000 pixels.
  QByteArray bomb =
      QByteArray("BM") + QByteArray(12, 0) + QByteArray("\x28\0\0\0\x30\x75\0\0\x30\x75\0\0\1\0\x20\0", 16);
  bomb[10] = 54;
  bomb += QByteArray(24 + 4096, 0);
  EXPECT_TRUE(images->imageNoLargerThanSize(bomb, 10, 10, 0.5).isEmpty());
}

TEST_F(DesktopAdapters, OnlyAProgramHasADisplayName) {
  const QString path = writeFile(u"bin/music-player.bin"_qs, "x");
  EXPECT_EQ(workspace->displayNameOfApplication(path), QString());
  QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner);
  EXPECT_EQ(workspace->displayNameOfApplication(path), u"music-player"_qs);
  EXPECT_FALSE(workspace->systemDescription().isEmpty());
}

TEST_F(DesktopAdapters, TheHomeTrashHasOneSpelling) {
  const QByteArray before = qgetenv("XDG_DATA_HOME");
  const bool wasSet = qEnvironmentVariableIsSet("XDG_DATA_HOME");
  for (const char *data : {"/a/data", "/a/data/", "/a//b/../data//"}) {
    qputenv("XDG_DATA_HOME", data);
    EXPECT_EQ(QtWorkspace::standardTrash(), u"/a/data/Trash"_qs) << data;
  }
  wasSet ? qputenv("XDG_DATA_HOME", before) : qunsetenv("XDG_DATA_HOME");
}
