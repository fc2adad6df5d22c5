#include "support/Trash.h"

#include <QFileInfo>

#include "tests/fixtures/RecordingWorkspace.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

class PutInTrash : public TestPlatform {};

TEST_F(PutInTrash, PathsInATrashAreKnownByTheirText) {
  const QString home = folder(QStringLiteral("home/Trash"));
  const std::pair<QString, bool> cases[] = {{home, true},
                                            {home + QStringLiteral("/files/a.mp3"), true},
                                            {home + QStringLiteral("/../a.mp3"), true},
                                            {home + QStringLiteral("ed/a.mp3"), false},
                                            {home.toLower() + QStringLiteral("/a.mp3"), false},
                                            {QStringLiteral("/disk/.Trash-1000/files/a.mp3"), true},
                                            {QStringLiteral("/Users/me/.Trash/a.mp3"), true},
                                            {QStringLiteral("/disk/.trash/a.mp3"), false},
                                            {QStringLiteral("/disk/Trash/a.mp3"), false},
                                            {QStringLiteral(".Trash/a.mp3"), false},
                                            {QString(), false}};
  for (const auto &[path, isInTrash] : cases) EXPECT_EQ(pathIsInTrash(path), isInTrash) << path.toStdString();
}

TEST_F(PutInTrash, WhatIsGoneNeedsNoTrash) {
  EXPECT_TRUE(doPutInTrash(folder(QStringLiteral("music/gone.mp3"))));
  EXPECT_EQ(workspace->recycled(), QStringList());
  const QString loose = folder(QStringLiteral("music/loose"));
  ASSERT_TRUE(QFile::link(QStringLiteral("/nowhere"), loose));
  EXPECT_TRUE(doPutInTrash(loose));
  EXPECT_EQ(workspace->namesInTrash(), QStringList(QStringLiteral("loose")));
}

TEST_F(PutInTrash, AFailureIsToldAndLogged) {
  const QString song = writeFile(QStringLiteral("music/a.mp3"), "a");
  workspace->failRecycle(QStringLiteral("cannot put it there"));
  EXPECT_FALSE(doPutInTrash(song));
  EXPECT_TRUE(QFileInfo::exists(song));
  EXPECT_TRUE(logContains(QStringLiteral("!! doPutInTrash: cannot put it there")));
  workspace->failRecycle({});
  EXPECT_TRUE(doPutInTrash(song));
  EXPECT_FALSE(QFileInfo::exists(song));
}

}  // namespace
