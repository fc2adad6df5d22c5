#include "ui/MergeSummary.h"

#include "tests/fixtures/TestPlatform.h"

namespace {

class Summary : public TestPlatform {
 protected:
  static MergedGroup group(std::vector<std::pair<UnkeptFate, qint64>> files,
                           const QStringList &playlists = {}) {
    MergedGroup made;
    made.complete = true;
    made.playlists = playlists;
    for (const auto &[fate, bytes] : files) {
      MergedGroup::Unkept file;
      file.fate = fate;
      file.bytes = bytes;
      file.removed = file.leftLibrary = fate != UnkeptFate::Collected;
      made.unkept.push_back(file);
    }
    return made;
  }
};

}  // namespace

TEST_F(Summary, TheHeadlineTellsWhatBecameOfWhichFiles) {
  MergedGroup unfinished = group({});
  unfinished.complete = false;
  const struct {
    MergeReport::Contents report;
    const char *headline;
  } cases[] = {
      {{{group({{UnkeptFate::Trashed, 3'400'000}})}, {}, {}, {}}, "1 group merged, 3.4 MB put in the Trash"},
      {{{group({{UnkeptFate::Moved, 900}, {UnkeptFate::AlreadyInFolder, 100}}), group({})}, {}, {}, {}},
       "2 groups merged, 1.0 kB moved to your folder"},
      {{{group({{UnkeptFate::Deleted, 5}, {UnkeptFate::Trashed, 0}})},
        {{{}, {}, QStringLiteral("why")}},
        {},
        {}},
       "1 group merged, 0 bytes put in the Trash, 5 bytes freed, 1 thing did not work"},
      {{{group({{UnkeptFate::Collected, 5}, {UnkeptFate::Shared, 7}, {UnkeptFate::Gone, 0}})}, {}, {}, {}},
       "1 group merged"},
      {{{unfinished}, {}, {}, {}}, "0 groups merged"},
  };
  for (const auto &one : cases) EXPECT_EQ(MergeSummary(one.report).headline().toStdString(), one.headline);
}

TEST_F(Summary, ACopyWhoseTrackCouldNotBeRemovedIsNoMovedFile) {
  MergedGroup failed = group({{UnkeptFate::Moved, 900}, {UnkeptFate::AlreadyInFolder, 1}});
  for (MergedGroup::Unkept &file : failed.unkept) file.removed = file.leftLibrary = false;
  const MergeSummary summary({{failed}, {}, {}, {}});
  EXPECT_EQ(summary.moved.count, 0);
  EXPECT_EQ(summary.headline(), u"1 group merged"_qs);
  const MergedGroup moved = group({{UnkeptFate::Moved, 900}});
  EXPECT_NE(MergeSummary::words(failed.unkept[0]), MergeSummary::words(moved.unkept[0]));
}

TEST_F(Summary, OfHundredsOfPlaylistsTenAreNamed) {
  QStringList names;
  for (int i = 0; i < 300; ++i) names << QStringLiteral("List %1 ").arg(i) + QString(250, u'x');
  const QString line = MergeSummary({{group({}, names)}, {}, {}, {}}).lines().value(0);
  EXPECT_TRUE(line.endsWith(u" and 290 more."_qs)) << line.toStdString();
  EXPECT_LT(line.size(), 1000);
}

TEST_F(Summary, APlaylistOfSeveralGroupsIsNamedOnceAndOnlyRemovedTracksCount) {
  const MergeSummary summary({{group({{UnkeptFate::Trashed, 1}}, {u"Road"_qs, u"Sea"_qs}),
                               group({{UnkeptFate::Collected, 1}}, {u"Road"_qs})},
                              {},
                              {},
                              {}});
  EXPECT_EQ(summary.removedTracks, 1);
  EXPECT_EQ(summary.playlists, (QStringList{u"Road"_qs, u"Sea"_qs}));
  EXPECT_TRUE(MergeSummary({}).isEmpty());
}
