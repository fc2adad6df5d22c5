#include "repairs/MergeJournal.h"

#include <sys/resource.h>

#include <csignal>

#include "tests/bridge/BridgeFixture.h"
#include "tests/fixtures/KeeperHost.h"
#include "values/Keys.h"

namespace {

using Counts = std::array<qint64, 4>;

/// Two tracks of 200 seconds, and an application that dies before a change that the test names.
class Journal : public BridgeTest {
 protected:
  Journal() : keeper(folder(u"library"_qs)), from(addTrack(3, 2)), to(addTrack(4, 1)) {
    services.scriptHost = &keeper;
    setPlatform(services);
  }
  QString path() const { return folder(u"support/journal"_qs); }
  QString addTrack(qint64 plays, qint64 skips) {
    const Dictionary keys = Dictionary::make();
    keys.set(keys::Name, u"T"_qs);
    keys.set(keys::TotalTime, 200000);
    keys.set(keys::PlayCount, plays);
    keys.set(keys::SkipCount, skips);
    return keeper.addTrack(keys);
  }
  QString counts(const QString &pid) {
    return u"%1 %2"_qs.arg(keeper.trackValue(pid, keys::PlayCount).toInteger())
        .arg(keeper.trackValue(pid, keys::SkipCount).toInteger());
  }
  void tellTrack(const QString &pid, const QString &statements) {
    keeper.tell(u"set t to (first track of library playlist 1 whose persistent ID is \"%1\")\n%2"_qs.arg(
        pid, statements));
  }
  /// The plays and skips of both tracks.
  void setCounts(const Counts &now) {
    const QString counts = u"set played count of t to %1\nset skipped count of t to %2"_qs;
    tellTrack(from, counts.arg(now[0]).arg(now[1]));
    tellTrack(to, counts.arg(now[2]).arg(now[3]));
  }
  std::optional<QString> merge(const QString &source, const QString &target) {
    MergeJournal journal(path());
    const std::optional<QString> problem = journal.open();
    return problem ? problem : journal.mergePlayed(source, target);
  }
  size_t openNotes() {
    MergeJournal journal(path());
    EXPECT_EQ(journal.open(), std::nullopt);
    return journal.openNotes().size();
  }
  void failScriptsWith(
      const QString &text, const std::function<void()> &before = [] {}) {
    keeper.intercept = [text, before](const QString &source) -> std::optional<ScriptOutcome> {
      if (!source.contains(text)) return std::nullopt;
      before();
      return ScriptOutcome{{}, ScriptFailure{-609, u"gone"_qs, 0, 0}};
    };
  }
  /// The script of a merge gets so far that the counts are these, and nobody answers.
  void breakOffAt(const Counts &reached) {
    setCounts({3, 2, 4, 1});
    failScriptsWith(u"mergePlayed(\""_qs, [&] { setCounts(reached); });
    EXPECT_TRUE(merge(from, to));
    keeper.intercept = {};
    EXPECT_EQ(openNotes(), 1u);
  }

  KeeperHost keeper;
  const QString from, to;
};

const Counts kBefore = {3, 2, 4, 1}, kAfter = {0, 0, 7, 3};

}  // namespace

TEST_F(Journal, CountsGoOverOnceWhereverTheScriptWasBrokenOff) {
  for (const Counts &reached : {kBefore, {3, 2, 4, 3}, {3, 0, 4, 3}, {3, 0, 7, 3}, kAfter}) {
    for (const bool isReversed : {false, true}) {
      breakOffAt(reached);
      const QString source = isReversed ? to : from, target = isReversed ? from : to;
      for (int times = 0; times < 2; ++times) {
        EXPECT_EQ(merge(source, target), std::nullopt);
        EXPECT_EQ(counts(target), u"7 3"_qs) << reached[0] << reached[1] << reached[2] << reached[3];
        EXPECT_EQ(counts(source), u"0 0"_qs);
      }
      EXPECT_EQ(openNotes(), 0u);
    }
  }
}

TEST_F(Journal, AKillBetweenTwoStepsCostsNoPlayAndAddsNone) {
  breakOffAt(kBefore);
  const QByteArray noted = readFile(path());
  QByteArray torn = noted;
  torn.replace(60, 20, QByteArray(20, ' '));
  EXPECT_EQ(merge(from, to), std::nullopt);
  const QByteArray blank = readFile(path());
  const struct {
    const QByteArray &file;
    const Counts &tracks;
  } kills[] = {
      // Before the journal, the note, its end, the script; behind the script; while the note goes.
      {{}, kBefore}, {blank, kBefore}, {torn, kBefore}, {noted, kBefore}, {noted, kAfter}, {torn, kAfter},
  };
  for (const auto &[file, tracks] : kills) {
    setCounts(tracks);
    writeFile(path(), file);
    EXPECT_EQ(merge(from, to), std::nullopt);
    EXPECT_EQ(counts(to) + u',' + counts(from), u"7 3,0 0"_qs);
  }
}

TEST_F(Journal, WhatWasPlayedMeanwhileIsNotTakenForWhatHadGoneOver) {
  constexpr int kHour = 3600;
  const struct {
    const char *what;
    Counts reached, then;
    int playedAfter;
    bool isSourcePlayed;
    const char16_t *sum;
  } cases[] = {
      {"all had gone over, then the source was played and skipped",
       kAfter,
       {3, 2, 7, 3},
       kHour,
       true,
       u"10 5"},
      {"nothing had, then the target was played and skipped", kBefore, {3, 2, 7, 3}, kHour, false, u"10 5"},
      {"the target had got them, then the source was played", {3, 2, 7, 3}, {4, 2, 7, 3}, 210, true, u"8 3"},
      {"the target had got them and was played", {3, 2, 7, 3}, {3, 2, 8, 3}, 210, false, u"8 3"},
      {"all had gone over, then both", kAfter, {1, 0, 8, 3}, 210, true, u"9 3"},
  };
  for (const auto &[what, reached, then, playedAfter, isSourcePlayed, sum] : cases) {
    for (const QString &pid : {from, to})
      tellTrack(pid, u"set played date of t to (current date)\nset skipped date of t to (current date)"_qs);
    time.run(kHour);
    breakOffAt(reached);
    setCounts(then);
    time.run(playedAfter);
    const QString played = isSourcePlayed ? from : to;
    tellTrack(played, u"set played date of t to (current date)"_qs);
    if (then[1] == 2 && playedAfter == kHour)
      tellTrack(played, u"set skipped date of t to (current date)"_qs);
    time.run(kHour);
    EXPECT_EQ(merge(from, to), std::nullopt);
    EXPECT_EQ(counts(to), QString::fromUtf16(sum)) << what;
    EXPECT_EQ(counts(from), u"0 0"_qs) << what;
  }
}

TEST_F(Journal, WithoutCountsOrTheirNoteNothingIsMerged) {
  failScriptsWith(u"srcCounts"_qs);
  EXPECT_TRUE(merge(from, to)->startsWith(u"error: The plays were not added up, as Music Keeper did not"));
  keeper.intercept = {};
  EXPECT_TRUE(merge(from, u"0123456789ABCDEF"_qs));
  // A disk that takes a part of the note.
  MergeJournal journal(path());
  EXPECT_EQ(journal.open(), std::nullopt);
  const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
  rlimit before = {};
  ::getrlimit(RLIMIT_FSIZE, &before);
  rlimit little = before;
  little.rlim_cur = 100;
  ::setrlimit(RLIMIT_FSIZE, &little);
  const std::optional<QString> problem = journal.mergePlayed(from, to);
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, ignored);
  EXPECT_TRUE(problem);
  EXPECT_EQ(counts(from) + u',' + counts(to), u"3 2,4 1"_qs);
  journal.close();
  EXPECT_EQ(openNotes(), 0u);
}

TEST_F(Journal, ANoteOfATrackThatIsGoneIsClosed) {
  breakOffAt({3, 2, 4, 3});
  keeper.tell(u"delete (first track of library playlist 1 whose persistent ID is \"%1\")"_qs.arg(from));
  MergeJournal journal(path());
  EXPECT_EQ(journal.open(), std::nullopt);
  journal.settle();
  journal.close();
  EXPECT_EQ(openNotes(), 0u);
}

TEST_F(Journal, WhileANoteCannotBeSettledItsTracksAreNotMerged) {
  breakOffAt({3, 2, 4, 3});
  failScriptsWith({});
  EXPECT_TRUE(merge(to, from));
  keeper.intercept = {};
  EXPECT_EQ(counts(from), u"3 2"_qs);
  EXPECT_EQ(openNotes(), 1u);
}

TEST_F(Journal, OneMergeHasTheJournalOfAllPrograms) {
  const QString shared = MergeJournal::defaultPath();
  services.bundle.executable = u"tallyfenctl"_qs;
  setPlatform(services);
  EXPECT_EQ(MergeJournal::defaultPath(), shared);
  const auto first = std::make_unique<MergeJournal>(shared);
  MergeJournal second(shared);
  EXPECT_EQ(first->open(), std::nullopt);
  EXPECT_TRUE(second.open()->contains(u"Another merge is running"));
  EXPECT_TRUE(second.mergePlayed(from, to));
  EXPECT_EQ(counts(to), u"4 1"_qs);
  first->close();
  EXPECT_EQ(second.open(), std::nullopt);
}

TEST_F(Journal, TornAndForeignNotesCountAsNone) {
  breakOffAt(kBefore);
  const QByteArray good = readFile(path());
  const auto changed = [&](const QByteArray &was, const QByteArray &is) {
    return QByteArray(good).replace(was, is);
  };
  struct {
    QByteArray bytes;
    size_t notes;
  } const cases[] = {{good, 1},
                     {good.left(512), 1},
                     {good + good, 1},
                     {good.left(511), 0},
                     {changed("[3,2,4,1]", "[2,2,4,1]"), 0},
                     {changed(from.toLatin1(), "\"& quit"), 0},
                     {QByteArray(200000, '['), 0},
                     {"{\"version\":1,\"notes\":[]}", 0}};
  for (const auto &one : cases) {
    setCounts(kBefore);
    writeFile(path(), one.bytes);
    EXPECT_EQ(openNotes(), one.notes) << one.bytes.left(100).toStdString();
    EXPECT_EQ(merge(from, to), std::nullopt);
    EXPECT_EQ(counts(to), u"7 3"_qs);
  }
}

TEST_F(Journal, WhatIsNoFileIsNotWrittenTo) {
  const QString other = writeFile(u"other"_qs, "x");
  QFile::link(other, folder(u"link"_qs));
  for (const QString &place : {folder(u"home"_qs), folder(u"link"_qs), folder(u"other/journal"_qs)}) {
    MergeJournal journal(place);
    EXPECT_TRUE(journal.open().value_or(QString()).contains(u"Nothing was touched")) << qPrintable(place);
    EXPECT_TRUE(journal.mergePlayed(from, to));
  }
  EXPECT_EQ(readFile(other), "x");
  EXPECT_EQ(counts(to), u"4 1"_qs);
}
