#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <sstream>

#include "ctl/MergeCommand.h"
#include "tests/fixtures/MergeWorld.h"
#include "tools/demo/Mp3Writer.h"
#include "values/Keys.h"

namespace {

/// A desktop that lets the test act when the first file goes to the trash, and that knows who watches the
/// applications.
class Desktop : public RecordingWorkspace {
 public:
  using RecordingWorkspace::RecordingWorkspace;
  std::vector<RunningApplication> runningApplications() const override { return running; }
  bool launchApplication(const QString &) override { return true; }
  LibraryActivity libraryActivity() const override { return activity; }
  Subscription observeApplications(std::function<void(const RunningApplication &)>,
                                   std::function<void(const RunningApplication &)> terminated) override {
    hasEnded = std::move(terminated);
    return 1;
  }
  void stopObserving(Subscription) override { hasEnded = {}; }
  bool recycle(const QString &path, QString *error) override {
    if (const auto act = std::exchange(onFirstTrash, {})) act();
    return RecordingWorkspace::recycle(path, error);
  }

  std::vector<RunningApplication> running{{u"com.brinmoor.keeper"_qs, u"Music Keeper"_qs}};
  LibraryActivity activity;
  std::function<void(const RunningApplication &)> hasEnded;
  /// On the merge's thread.
  std::function<void()> onFirstTrash;
};

/// A terminal's input that lets the test act before the person's answer is read.
class Person : public std::stringbuf {
 public:
  Person(const std::string &answers, std::function<void()> act)
      : std::stringbuf(std::ios::in), remaining(answers), beforeAnswer(std::move(act)) {}

 private:
  int_type underflow() override {
    if (const auto act = std::exchange(beforeAnswer, {})) act();
    if (!remaining.empty()) str(std::exchange(remaining, {}));
    return std::stringbuf::underflow();
  }

  std::string remaining;
  std::function<void()> beforeAnswer;
};

/// Two songs in two copies each, which the terminal's program merges through a keeper in this process.
class MergeRunTest : public MergePlatform {
 public:
  using MergePlatform::time;
  MergeRunTest() : desktop(folder(u"home/Trash"_qs)) {
    services.workspace = &desktop;
    setPlatform(services);
    setPreference(u"preferAudioFileBitRate"_qs, 160);
    setPreference(u"allowedDurationVariation"_qs, 10);
    for (const QString &name : {u"One"_qs, u"Two"_qs}) {
      kept << addCopy(name, 64, 2);
      other << addCopy(name, 32, 3);
    }
  }

  QString pathOf(const QString &name, int bitRate) const {
    return folder(u"music/%1 %2.mp3"_qs.arg(name).arg(bitRate));
  }
  QString addCopy(const QString &name, int bitRate, qint64 plays) {
    SongTags tags;
    tags.name = name;
    tags.artist = u"A"_qs;
    const QString path = writeFile(pathOf(name, bitRate), makeMp3(tags, bitRate, 40000).bytes);
    const Dictionary track = Dictionary::make();
    const std::pair<Key, Value> values[] = {
        {keys::Name, name},       {keys::Artist, u"A"_qs},       {keys::Kind, u"MPEG audio file"_qs},
        {keys::TotalTime, 40000}, {keys::BitRate, bitRate},      {keys::Size, QFileInfo(path).size()},
        {keys::PlayCount, plays}, {keys::TrackType, u"File"_qs}, {keys::Location, u"file://"_qs + path}};
    for (const auto &[key, value] : values) track.set(key, value);
    return keeper.addTrack(track);
  }

  /// Runs the command; the exit code, or what the process was ended with less 100.
  int merge(const QStringList &arguments, const std::string &answers = {},
            std::function<void()> beforeAnswer = {}) {
    Person person(answers, std::move(beforeAnswer));
    std::istream in(&person);
    std::ostringstream output, errors;
    Terminal terminal{in, output, errors, false, !answers.empty()};
    MergeCommand command([this](const std::function<bool()> &done, const std::function<void()> &onInterrupt) {
      const auto test = [&] {
        if (interrupts.exchange(false)) onInterrupt();
        return done();
      };
      EXPECT_TRUE(time.runUntil(test)) << "the merge hangs";
    });
    command.exitProcess = [this](int code) {
      isReleased = true;
      throw Exit{code};
    };
    int code = 0;
    try {
      code = command.run(arguments, terminal);
    } catch (const Exit &exit) {
      code = exit.code - 100;
    }
    out = output.str();
    err = errors.str();
    return code;
  }
  /// Has the main thread do it, and all that follows from it at once.
  void onMainThread(const std::function<void()> &task) {
    time.postAndWait(task);
    time.postAndWait([] {});
  }
  /// Music Keeper goes, and what is asked of it fails.
  void endKeeper() {
    keeper.intercept = [](const QString &) { return ScriptOutcome{{}, ScriptFailure{-609, u"gone"_qs}}; };
    onMainThread([this] {
      desktop.running.clear();
      desktop.hasEnded({u"com.brinmoor.keeper"_qs, u"Music Keeper"_qs});
    });
  }
  QJsonObject json() const {
    QJsonParseError error;
    const QJsonObject whole = QJsonDocument::fromJson(QByteArray::fromStdString(out), &error).object();
    EXPECT_EQ(error.error, QJsonParseError::NoError) << out;
    return whole;
  }

  struct Exit {
    int code;
  };
  Desktop desktop;
  QStringList kept, other;
  std::atomic<bool> interrupts{false}, isReleased{false};
  std::string out, err;
};

}  // namespace

TEST_F(MergeRunTest, TheOutcomeTellsWhatBecameOfEachTrackAndFile) {
  keeper.addPlaylist(u"List"_qs, {other[0], kept[1]});
  EXPECT_EQ(merge({u"--yes"_qs, u"--json"_qs, u"--group"_qs, u"1"_qs}), 0) << err;
  const QString expected =
      u"\"outcome\": {\"groups\": [{\"title\": \"A \\\"One\\\"\", \"kept\": \"%1\", \"info\": \"%2\", "
      u"\"path\": "
      u"\"%3\", \"removed\": [\"%2\"], \"files\": [{\"pid\": \"%2\", \"path\": \"%4\", \"newPath\": null, "
      u"\"bytes\": 160178, \"fate\": \"trash\", \"removed\": true}], \"playlists\": [\"List\"], "
      u"\"complete\": "
      u"true}], \"totals\": {\"before\": {\"tracks\": 4, \"plays\": 10, "_qs.arg(
          kept[0], other[0], pathOf(u"One"_qs, 64), pathOf(u"One"_qs, 32));
  EXPECT_NE(out.find(expected.toStdString()), std::string::npos) << out;
  const QJsonObject outcome = json()[u"outcome"].toObject();
  const QJsonObject after = outcome[u"totals"][u"after"].toObject();
  EXPECT_EQ(after[u"tracks"].toInt(), 3);
  EXPECT_EQ(after[u"plays"].toInt(), 10);
  EXPECT_EQ(after[u"files"].toInt(), 3);
  EXPECT_TRUE(outcome[u"failures"].toArray().isEmpty());
  EXPECT_EQ(desktop.recycled(), QStringList{pathOf(u"One"_qs, 32)});
}

/// Something that stops a merge when its first file is on the way to the trash.
struct Stop {
  const char *name;
  void (*happens)(MergeRunTest &test);
  /// Less 100 if the process was ended.
  int exitCode;
  /// The groups that the outcome tells of, and whether the first is complete.
  int groups;
  bool isFirstComplete;
  /// What the reason or the path of the one failure holds; null for no failure.
  const char *reason;
  const char *message;
};

void PrintTo(const Stop &stop, std::ostream *out) {
  *out << stop.name;
}

class MergeStopTest : public MergeRunTest, public ::testing::WithParamInterface<Stop> {};

TEST_P(MergeStopTest, TheJsonIsWholeAndTellsWhatWasDoneAndWhatStoppedIt) {
  const Stop &stop = GetParam();
  desktop.onFirstTrash = [&] { stop.happens(*this); };
  // Whatever a person would answer to a question that is about windows.
  EXPECT_EQ(merge({u"--yes"_qs, u"--json"_qs}, "y\ny\ny\ny\n"), stop.exitCode) << err;
  EXPECT_NE(err.find(stop.message), std::string::npos) << err;
  const QJsonObject outcome = json()[u"outcome"].toObject();
  const QJsonArray groups = outcome[u"groups"].toArray(), failures = outcome[u"failures"].toArray();
  ASSERT_EQ(groups.size(), stop.groups) << out;
  EXPECT_EQ(groups[0][u"complete"].toBool(), stop.isFirstComplete) << out;
  ASSERT_EQ(failures.isEmpty(), !stop.reason) << out;
  const QString reason = failures[0][u"reason"].toString() + failures[0][u"path"].toString();
  EXPECT_TRUE(reason.contains(QString::fromUtf8(stop.reason))) << out;
}

INSTANTIATE_TEST_SUITE_P(
    Stops, MergeStopTest,
    ::testing::Values(
        Stop{"AnInterruption", [](MergeRunTest &test) { test.onMainThread([&] { test.interrupts = true; }); },
             1, 1, false, nullptr, "cancelled"},
        Stop{"AKeptFileThatGoes", [](MergeRunTest &test) { QFile::remove(test.pathOf(u"Two"_qs, 64)); }, 1, 1,
             true, "Two 64.mp3", ""},
        Stop{"TheEndOfMusicKeeper", [](MergeRunTest &test) { test.endKeeper(); }, 1, 1, false, "quit", ""},
        Stop{"AThreadThatHangs",
             [](MergeRunTest &test) {
               while (!test.isReleased) test.time.sleep(1);
             },
             1 - 100, 0, false, "", ""}),
    [](const auto &one) { return std::string(one.param.name); });

TEST_F(MergeRunTest, OnlyAPlanThatIsAgreedToAndStillHoldsIsCarriedOut) {
  const struct {
    const char *answer;
    std::function<void()> meanwhile;
    int exitCode;
    const char *message;
    qsizetype trashed;
  } cases[] = {
      {"n\n", {}, 1, "[y/N] tallyfenctl: nothing has been changed\n", 0},
      {"", {}, 1, "--yes carries the plan out", 0},
      {"y\n", [this] { addCopy(u"One"_qs, 48, 0); }, 1, "the library has changed since the plan was shown",
       0},
      {"y\n", {}, 0, "", 3},
  };
  for (const auto &one : cases) {
    EXPECT_EQ(merge({}, one.answer, one.meanwhile), one.exitCode) << err;
    EXPECT_NE(err.find(one.message), std::string::npos) << err;
    EXPECT_EQ(desktop.recycled().size(), one.trashed);
  }
}

TEST_F(MergeRunTest, AFirstImportIsWaitedForAndOneThatFailedIsTold) {
  desktop.activity = {LibraryActivity::State::Importing, u"a.xml"_qs, 7, 10};
  EXPECT_EQ(merge({u"--dry-run"_qs}), 1);
  EXPECT_EQ(out, "");
  EXPECT_NE(err.find("is still taking in its library (7 of 10 tracks)"), std::string::npos) << err;
  desktop.activity = {LibraryActivity::State::None, {}, 0, 0, u"it holds no library"_qs};
  EXPECT_EQ(merge({u"--dry-run"_qs}), 1);
  EXPECT_NE(err.find("could not take in its library: it holds no library"), std::string::npos) << err;
  EXPECT_NE(out.find("2 groups to merge"), std::string::npos) << out;
}
