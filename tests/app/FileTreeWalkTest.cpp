#include "app/library/FileTreeWalk.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>

#include "app/library/LibraryFile.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

/// Calls a folder whose name ends in ".app" a package.
class Packages : public FileFacts {
 public:
  Dictionary metadata(const QString &) const override { return {}; }
  std::optional<Date> modificationDate(const QString &) const override { return {}; }
  QString typeCode(const QString &) const override { return {}; }
  bool isPackage(const QString &path) const override { return path.endsWith(u".app"); }
  qint64 freeBytes(const QString &) const override { return 0; }
  std::optional<qint64> fileSize(const QString &) const override { return {}; }
};

class FileTreeWalk : public TestPlatform {
 protected:
  void fill(std::initializer_list<const char *> names) const {
    for (const char *name : names) writeFile(u"music/"_qs + QString::fromUtf8(name), "x");
  }
  /// What a walk finds, sorted; "nothing" for no list.
  QStringList walk(bool packages = false, quint32 count = 0, const QString &under = u"music"_qs) const {
    auto found =
        BMUtility::recursiveFilePathsInDirectoryEnterPackagesMaxCount(folder(under), packages, count);
    if (found) found->sort();
    return found.value_or(QStringList(u"nothing"_qs));
  }
};

TEST_F(FileTreeWalk, FilesAndFoldersAreListedHiddenOnesToo) {
  fill({"b.mp3", "a/.DS_Store", "a/c/d.mp3"});
  EXPECT_EQ(walk(), QStringList({u"a"_qs, u"a/.DS_Store"_qs, u"a/c"_qs, u"a/c/d.mp3"_qs, u"b.mp3"_qs}));
  EXPECT_EQ(walk(false, 0, u"music/"_qs), walk());
  const auto found =
      BMUtility::recursiveFilePathsInDirectoryEnterPackagesMaxCount(folder(u"music"_qs), false, 0);
  EXPECT_EQ(found->indexOf(u"a/c/d.mp3"_qs), found->indexOf(u"a/c"_qs) + 1) << "right behind its folder";
  EXPECT_TRUE(logContains(u"[recurFPID 5 items in"_qs));
}

TEST_F(FileTreeWalk, NothingIsTheAnswerForWhatIsEmptyOrCannotBeRead) {
  EXPECT_EQ(walk(), QStringList(u"nothing"_qs));
  EXPECT_EQ(walk(false, 0, u"none"_qs), QStringList(u"nothing"_qs));
  fill({"a"});
  EXPECT_EQ(walk(false, 0, u"music/a"_qs), QStringList(u"nothing"_qs)) << "a file";
}

TEST_F(FileTreeWalk, LinksAreNeitherListedNorFollowed) {
  fill({"a/b.mp3"});
  QFile::link(folder(u"music"_qs), folder(u"music/a/loop"_qs));
  QFile::link(folder(u"music/a/b.mp3"_qs), folder(u"music/song"_qs));
  QFile::link(folder(u"none"_qs), folder(u"music/dangling"_qs));
  QFile::link(folder(u"music/self"_qs), folder(u"music/self"_qs));
  EXPECT_EQ(walk(), QStringList({u"a"_qs, u"a/b.mp3"_qs}));
  EXPECT_EQ(logText().count(u"!!! rfpid !exists"_qs), 2);
}

TEST_F(FileTreeWalk, ANameThatIsNoTextIsLeftOutAndOddOnesStay) {
  fill({"\xEF\xBF\xBD.mp3", "new\nline", "e\xCC\x81", "\xC3\xA9"});
  ASSERT_EQ(::mkdir((QFile::encodeName(folder(u"music"_qs)) + "/bad\xFF").constData(), 0700), 0);
  ASSERT_EQ(::mkfifo(QFile::encodeName(folder(u"music/pipe"_qs)).constData(), 0600), 0);
  EXPECT_EQ(walk().size(), 5);
  EXPECT_TRUE(logContains(u"!!! rfpid !exists"_qs));
}

TEST_F(FileTreeWalk, APackageIsOneItemUnlessItIsEntered) {
  Packages packages;
  services.fileFacts = &packages;
  setPlatform(services);
  fill({"Player.app/inside"});
  EXPECT_EQ(walk(false), QStringList(u"Player.app"_qs));
  EXPECT_EQ(walk(true).size(), 2);
}

TEST_F(FileTreeWalk, TheCountIsExactAtTheTopAndLooseBelow) {
  fill({"1", "2", "3", "4"});
  EXPECT_EQ(walk(false, 2).size(), 2);
  EXPECT_EQ(walk(false, 9).size(), 4);
  const auto step = [this](quint32 count, const QString &base) {
    return BMUtility::recursiveFilePathsInDirectoryBasePathEnterPackagesMaxCount(folder(u"music"_qs), base,
                                                                                 false, count)
        ->size();
  };
  EXPECT_EQ(step(2, folder(u"music"_qs)), 4) << "no folder behind which it is looked at";
  fill({"a/1", "a/2", "a/3", "b/1", "b/2", "b/3"});
  EXPECT_LT(step(2, folder(u"music"_qs)), 12);
  EXPECT_EQ(step(0, folder(u"music"_qs)), 12);
}

TEST_F(FileTreeWalk, WhatIsNoLongerThanTheBaseIsEnteredButNotListed) {
  fill({"a/long name.mp3"});
  const QString base = folder(u"music/abc"_qs);
  const auto found = BMUtility::recursiveFilePathsInDirectoryBasePathEnterPackagesMaxCount(
      folder(u"music"_qs), base, false, 0);
  EXPECT_EQ(found.value_or(QStringList()), QStringList(u"ng name.mp3"_qs));
}

TEST_F(FileTreeWalk, ExternalPicturesAreSortedByTheLastDigitsOfTheirId) {
  iTunesInterface::resetLibraryCache();
  EXPECT_TRUE(iTunesInterface::pathToExternalArtForIDLocal(u"0123456789ABCDEF"_qs, true).isNull());
  QString error;
  iTunesInterface::getMusicLibraryDictionaryAtPathWithError(
      writeFile(u"music/Lib.xml"_qs,
                "<plist version=\"1.0\"><dict><key>Library Persistent ID</key>"
                "<string>AB12</string><key>Tracks</key><dict/></dict></plist>"),
      &error);
  const QString root = folder(u"music/Album Artwork/"_qs);
  EXPECT_EQ(iTunesInterface::pathToExternalArtForIDLocal(u"0123456789ABC09F"_qs, true),
            root + u"Local/AB12/15/09/00/AB12-0123456789ABC09F.itc"_qs);
  EXPECT_EQ(iTunesInterface::pathToExternalArtForIDLocal(u"0123456789"_qs, false),
            root + u"Download/AB12/09/08/07/AB12-0123456789.itc"_qs);
  EXPECT_TRUE(iTunesInterface::pathToExternalArtForIDLocal(u"012345678"_qs, true).isNull());
  iTunesInterface::resetLibraryCache();
}

}  // namespace
