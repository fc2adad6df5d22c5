#include "repairs/MergeJournal.h"

#include "tests/fixtures/MergeWorld.h"
#include "values/Keys.h"

namespace {

/// An application that dies before a change of a track that the test names.
class Journal : public MergeWorld {
 protected:
  Journal() : from(addSong(1, {.plays = 3, .skips = 2})), to(addSong(1, {.plays = 4, .skips = 1})) {}
  QString path() const { return folder(u"support/journal.json"_qs); }
  QString counts(const QString &pid) {
    return u"%1 %2"_qs.arg(plays(pid)).arg(keeper.trackValue(pid, keys::SkipCount).toInteger());
  }
  void setCounts(const QString &pid, qint64 playCount, qint64 skipCount) {
    keeper.tell(
        u"set t to (first track of library playlist 1 whose persistent ID is \"%1\")\n"
        "set played count of t to %2\nset skipped count of t to %3"_qs.arg(pid)
            .arg(playCount)
            .arg(skipCount));
  }
  /// The script of a merge gets so far that the counts are these, and nobody answers.
  void breakOffAt(const std::array<qint64, 4> &reached) {
    bool isBroken = false;
    keeper.intercept = [&](const QString &source) -> std::optional<ScriptOutcome> {
      if (isBroken || !source.contains(u"mergePlayed(\""_qs)) return std::nullopt;
      isBroken = true;
      setCounts(from, reached[0], reached[1]);
      setCounts(to, reached[2], reached[3]);
      return ScriptOutcome{{}, ScriptFailure{-609, u"gone"_qs, 0, 0}};
    };
    // A script that did all and whose answer alone was lost has merged.
    EXPECT_EQ(MergeJournal(path()).mergePlayed(from, to).has_value(), reached[0] + reached[1] > 0);
    keeper.intercept = {};
  }
  const QString from, to;
};

}  // namespace

TEST_F(Journal, CountsGoOverOnceWhereverTheScriptWasBrokenOff) {
  const std::array<qint64, 4> steps[] = {
      {3, 2, 4, 1}, {3, 2, 4, 3}, {3, 0, 4, 3}, {3, 0, 7, 3}, {0, 0, 7, 3}};
  for (const auto &reached : steps) {
    for (const bool isReversed : {false, true}) {
      setCounts(from, 3, 2);
      setCounts(to, 4, 1);
      breakOffAt(reached);
      // The source has been played once more before the merge is repeated, maybe the other way round.
      setCounts(from, plays(from) + 1, keeper.trackValue(from, keys::SkipCount).toInteger());
      MergeJournal again(path());
      EXPECT_EQ(again.openNotes().size(), reached[0] + reached[1] > 0 ? 1u : 0u);
      const QString source = isReversed ? to : from, target = isReversed ? from : to;
      EXPECT_EQ(again.mergePlayed(source, target), std::nullopt);
      EXPECT_EQ(counts(target), u"8 3"_qs) << reached[0] << reached[1] << reached[2] << reached[3];
      EXPECT_EQ(counts(source), u"0 0"_qs);
      EXPECT_TRUE(again.openNotes().empty());
      EXPECT_EQ(again.mergePlayed(source, target), std::nullopt);
      EXPECT_EQ(counts(target), u"8 3"_qs);
    }
  }
}

TEST_F(Journal, ANoteOfATrackThatIsGoneIsClosed) {
  breakOffAt({3, 2, 4, 3});
  keeper.tell(u"delete (first track of library playlist 1 whose persistent ID is \"%1\")"_qs.arg(from));
  MergeJournal journal(path());
  journal.settle();
  EXPECT_TRUE(journal.openNotes().empty());
  EXPECT_TRUE(MergeJournal(path()).openNotes().empty());
}

TEST_F(Journal, WhileANoteCannotBeSettledItsTracksAreNotMerged) {
  breakOffAt({3, 2, 4, 3});
  keeper.intercept = [](const QString &) { return ScriptOutcome{{}, ScriptFailure{-600, u"gone"_qs, 0, 0}}; };
  MergeJournal journal(path());
  EXPECT_TRUE(journal.mergePlayed(to, from));
  keeper.intercept = {};
  EXPECT_EQ(counts(from), u"3 2"_qs);
  EXPECT_EQ(MergeJournal(path()).openNotes().size(), 1u);
}

TEST_F(Journal, ATornOrForeignFileCountsAsNoNotes) {
  const QByteArray good =
      R"({"version":1,"notes":[{"from":"0123456789ABCDEF","to":"0123456789ABCDE0","counts":[1,0,2,0]}]})";
  struct {
    QByteArray bytes;
    size_t notes;
  } const cases[] = {{good, 1},
                     {good.left(60), 0},
                     {"", 0},
                     {"[]", 0},
                     {QByteArray(good).replace("\"version\":1", "\"version\":2"), 0},
                     {QByteArray(good).replace("CDE0", "\\\"& quit"), 0},
                     {QByteArray(good).replace("[1,0,2,0]", "[1,-1,2,0]"), 0},
                     {QByteArray(good).replace("[1,0,2,0]", "[1]"), 0},
                     {QByteArray(2 << 20, '['), 0}};
  for (const auto &one : cases) {
    writeFile(path(), one.bytes);
    EXPECT_EQ(MergeJournal(path()).openNotes().size(), one.notes) << one.bytes.left(100).toStdString();
    EXPECT_EQ(MergeJournal(path()).mergePlayed(from, to), std::nullopt);
  }
}

TEST_F(Journal, WithoutItsNoteNothingIsMerged) {
  writeFile(u"support/file"_qs, "x");
  EXPECT_TRUE(MergeJournal(folder(u"support/file/journal.json"_qs)).mergePlayed(from, to));
  EXPECT_EQ(counts(to), u"4 1"_qs);
}
