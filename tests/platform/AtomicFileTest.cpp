#include <sys/resource.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <csignal>

#include "platform/AtomicFile.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

class AtomicFile : public TestPlatform {
 protected:
  /// Files of any kind in the test's folder "files", hidden ones too.
  qsizetype fileCount() const {
    return QDir(folder(u"files"_qs)).entryList(QDir::Files | QDir::Hidden | QDir::System).size();
  }
};

}  // namespace

TEST_F(AtomicFile, ReplacesWholeAndKeepsPermissionsAndLinks) {
  const QString path = writeFile(u"files/a.plist"_qs, "old and longer");
  QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
  QFile::link(path, folder(u"files/link"_qs));
  QString error;
  EXPECT_TRUE(writeFileAtomically(folder(u"files/link"_qs), "new", true, &error)) << error.toStdString();
  EXPECT_EQ(readFile(path), "new");
  EXPECT_TRUE(QFileInfo(folder(u"files/link"_qs)).isSymLink());
  EXPECT_FALSE(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther));
  EXPECT_EQ(fileCount(), 2);
}

TEST_F(AtomicFile, AFullDiskLeavesTheOldFileAndNothingElse) {
  const QString path = writeFile(u"files/a.plist"_qs, "old");
  rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit small = before;
  small.rlim_cur = 4096;
  setrlimit(RLIMIT_FSIZE, &small);
  QString error;
  const bool written = writeFileAtomically(path, QByteArray(100000, 'x'), false, &error);
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_FALSE(written);
  EXPECT_TRUE(error.contains(path)) << error.toStdString();
  EXPECT_EQ(readFile(path), "old");
  EXPECT_EQ(fileCount(), 1);
}

TEST_F(AtomicFile, AMissingFolderAndACircleOfLinksAreNamed) {
  QString error;
  EXPECT_FALSE(writeFileAtomically(folder(u"none/a"_qs), "x", false, &error));
  EXPECT_TRUE(error.contains(folder(u"none/a"_qs)) && error.contains(u"No such file")) << error.toStdString();
  QDir().mkpath(folder(u"files"_qs));
  QFile::link(folder(u"files/b"_qs), folder(u"files/c"_qs));
  QFile::link(folder(u"files/c"_qs), folder(u"files/b"_qs));
  EXPECT_FALSE(writeFileAtomically(folder(u"files/b"_qs), "x", false, &error));
}
