#include "repairs/UnkeptFiles.h"

#include <sys/resource.h>

#include <QDateTime>
#include <QDir>
#include <csignal>

#include "tests/fixtures/TestPlatform.h"

namespace {

class UnkeptFiles : public TestPlatform {
 protected:
  QString file(const QString &path, const QByteArray &bytes, qint64 secondsSinceEpoch) {
    const QString whole = writeFile(path, bytes);
    QFile made(whole);
    EXPECT_TRUE(made.open(QIODevice::ReadWrite));
    made.setFileTime(QDateTime::fromSecsSinceEpoch(secondsSinceEpoch), QFileDevice::FileModificationTime);
    return whole;
  }
  QStringList inFolder() const {
    return QDir(folder(u"kept out"_qs)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
  }
  unkeptFiles::FolderCopy copy(const QString &path) {
    return unkeptFiles::safelyCopyFileAtPathToFolder(path, folder(u"kept out"_qs));
  }
};

}  // namespace

TEST_F(UnkeptFiles, ACopyOfEqualSizeAndDateIsNotMadeAgainAndOthersGetANumber) {
  struct {
    const char *name, *content;
    qint64 date;
    const char *expected;
    bool wasThere;
  } const steps[] = {
      {"a.mp3", "one", 1000, "a.mp3", false},     {"a.mp3", "one", 1000, "a.mp3", true},
      {"a.mp3", "one", 2000, "a-2.mp3", false},   {"a.mp3", "three", 1000, "a-3.mp3", false},
      {"a.mp3", "one", 2000, "a-2.mp3", true},    {"a.mp3", "two", 1000, "a-4.mp3", false},
      {"noext", "one", 1000, "noext", false},     {"noext", "two", 1000, "noext-2.", false},
      {".hidden", "one", 1000, ".hidden", false}, {".hidden", "2", 1000, ".hidden-2.", false},
  };
  for (const auto &step : steps) {
    const QString source = file(u"music/"_qs + QString::fromUtf8(step.name), step.content, step.date);
    const unkeptFiles::FolderCopy made = copy(source);
    EXPECT_EQ(QFileInfo(made.path).fileName(), QString::fromUtf8(step.expected)) << qPrintable(made.error);
    EXPECT_EQ(made.wasThere, step.wasThere) << step.expected;
    EXPECT_EQ(readFile(made.path), QByteArray(step.content));
    EXPECT_EQ(QFileInfo(made.path).lastModified(), QFileInfo(source).lastModified());
    EXPECT_EQ(QFileInfo(made.path).permissions(), QFileInfo(source).permissions());
  }
  EXPECT_EQ(inFolder().size(), 8);
}

TEST_F(UnkeptFiles, OnlyAWholeCopyLetsTheSourceGo) {
  const QString source = file(u"music/a.mp3"_qs, QByteArray(600'000, 'x'), 1000);
  const QString made = copy(source).path;
  QByteArray torn = readFile(made);
  torn[599'999] = 'y';
  for (const QByteArray &bytes : {torn, torn.left(1000), QByteArray()}) {
    writeFile(made, bytes);
    EXPECT_FALSE(unkeptFiles::deleteCopiedFile(source, made));
  }
  EXPECT_FALSE(unkeptFiles::deleteCopiedFile(source, source));
  EXPECT_FALSE(unkeptFiles::deleteCopiedFile(source, folder(u"nowhere"_qs)));
  QFile::remove(made);
  ASSERT_TRUE(QFile::link(source, made));
  EXPECT_FALSE(unkeptFiles::deleteCopiedFile(source, made));
  QFile::remove(made);
  EXPECT_TRUE(unkeptFiles::deleteCopiedFile(source, copy(source).path));
  EXPECT_FALSE(QFile::exists(source));
}

TEST_F(UnkeptFiles, AFileThatLiesInTheFolderAlreadyIsNoCopyOfItself) {
  const QString source = file(u"kept out/a.mp3"_qs, "audio", 1000);
  const unkeptFiles::FolderCopy made = copy(source);
  EXPECT_EQ(QFileInfo(made.path).fileName(), u"a-2.mp3"_qs);
  EXPECT_FALSE(made.wasThere);
}

TEST_F(UnkeptFiles, WhatCannotBeCopiedLeavesNothingBehind) {
  EXPECT_TRUE(copy(folder(u"music/none.mp3"_qs)).path.isEmpty());
  QDir().mkpath(folder(u"music/dir.mp3"_qs));
  const unkeptFiles::FolderCopy ofFolder = copy(folder(u"music/dir.mp3"_qs));
  EXPECT_TRUE(ofFolder.path.isEmpty() && !ofFolder.error.isEmpty() && !ofFolder.folderIsAtFault);
  // A disk that takes a part of it only.
  const QString source = file(u"music/a.mp3"_qs, QByteArray(600'000, 'x'), 1000);
  struct rlimit limit = {};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlim_t most = std::exchange(limit.rlim_cur, 400'000);
  const auto former = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  const unkeptFiles::FolderCopy onFull = copy(source);
  limit.rlim_cur = most;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, former);
  EXPECT_TRUE(onFull.path.isEmpty() && onFull.folderIsAtFault &&
              onFull.error.contains(u"cannot write to"_qs));
  EXPECT_TRUE(inFolder().isEmpty());
}
