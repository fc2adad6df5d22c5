#include "support/TopLevelDirectories.h"

#include <gtest/gtest.h>

namespace {

std::vector<std::pair<QString, qsizetype>> folders(std::initializer_list<const char16_t *> paths,
                                                   qsizetype minimum = 3) {
  std::vector<QString> list;
  for (const char16_t *path : paths) list.push_back(QString::fromUtf16(path));
  return BMUtility::topLevelDirectoriesFromPathsStopFragmentsMinComponents(list, {QStringLiteral("/iTunes/")},
                                                                           minimum);
}

std::pair<QString, qsizetype> folder(const char16_t *path, qsizetype count) {
  return {QString::fromUtf16(path), count};
}

}  // namespace

TEST(TopLevelDirectories, PathsUnderOneFolderCountTogether) {
  const auto found =
      folders({u"/v/m/x/a/b/1.mp3", u"/v/m/x/a/c/2.mp3", u"/v/m/x/d/e/3.mp3", u"/w/o/k/4.mp3"});
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0], folder(u"/v/m/x", 3));
  EXPECT_EQ(found[1], folder(u"/w/o/k", 1));
}

TEST(TopLevelDirectories, AFragmentStopsTheFolderBehindIt) {
  const auto found = folders({u"/u/me/Music/iTunes/Media/A/1.mp3", u"/u/me/Music/iTunes/Other/2.mp3"});
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0], folder(u"/u/me/Music/iTunes", 2));
}

TEST(TopLevelDirectories, AFragmentAtTheFrontDoesNotCut) {
  EXPECT_EQ(folders({u"/iTunes/a/b/1.mp3"}).at(0), folder(u"/iTunes/a/b", 1));
}

TEST(TopLevelDirectories, ShortPathsAndTheTrashNeverCount) {
  EXPECT_TRUE(folders({u"1.mp3", u"/1.mp3", u"/a/1.mp3", u"/home/me/.Trash/a/1.mp3"}).empty());
}

TEST(TopLevelDirectories, AFolderThatMatchesNothingIsEnteredWhole) {
  EXPECT_EQ(folders({u"/a/b/c/d/e/f/1.mp3"}).at(0), folder(u"/a/b/c/d/e/f", 1));
}
