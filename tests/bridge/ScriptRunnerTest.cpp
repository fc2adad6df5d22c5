#include <QFile>

#include "support/BMLog.h"
#include "tests/bridge/BridgeFixture.h"

using namespace iTunesInterface;

namespace {

const QString kScript = u"tell app \"iTunes\" to go"_qs;
const QString kSent = u"tell app \"Music Keeper\" to go"_qs;

class ScriptRunner : public BridgeTest {};

}  // namespace

TEST_F(ScriptRunner, PutsTheApplicationsNameInPlaceOfTheQuotedOneOnly) {
  stringFromScript(u"tell app \"iTunes\" to say \"iTunes\" -- iTunes \"my iTunes\""_qs);
  EXPECT_EQ(host.scripts(),
            QStringList{u"tell app \"Music Keeper\" to say \"Music Keeper\" -- iTunes \"my iTunes\""_qs});
}

TEST_F(ScriptRunner, AThreadThatWaitedBeyondTheEndOfThePlatformRunsNothing) {
  host.answerAfter(5, u"late"_qs);
  host.answerAfter(5, u"late"_qs);
  Workers workers;
  for (int i = 0; i < 2; ++i) {
    workers.detach(u"untimed"_qs, [] { stringFromScript(kScript); });
    workers.detach(u"timed"_qs, [] { descFromScriptTimeoutSeconds(kScript, 0.1f); });
  }
  time.run(1);
  services.scriptHost = nullptr;
  setPlatform(services);
  time.run(10);
  workers.joinAll();
  EXPECT_LE(host.scripts().size(), 2);
}

TEST_F(ScriptRunner, UntimedResultsComeAsTextAndAsNumber) {
  const struct {
    ScriptDescriptor result;
    std::optional<QString> text;
    qint32 number;
  } cases[] = {{ScriptDescriptor::ofText(u"12 apples"_qs), u"12 apples"_qs, 0},
               {ScriptDescriptor::ofText(u"12"_qs), u"12"_qs, 12},
               {ScriptDescriptor::ofInteger(-7), u"-7"_qs, -7},
               {ScriptDescriptor::ofBoolean(true), u"true"_qs, 1},
               {ScriptDescriptor(), std::nullopt, 0}};
  for (const auto &expected : cases) {
    for (int i = 0; i < 2; ++i)
      host.answer(ScriptedHost::Answer([&] { return ScriptedHost::resultOf(expected.result); }));
    EXPECT_EQ(stringFromScript(kScript), expected.text);
    EXPECT_EQ(intFromScript(kScript), expected.number);
    EXPECT_EQ(lastScriptErrorNumber(), 0);
  }
  EXPECT_EQ(logText(), QString());
}

TEST_F(ScriptRunner, FailuresGiveNothingTheirNumberAndALineInTheLog) {
  const struct {
    ScriptOutcome outcome;
    float timeout;
    qint64 number;
    const char *line;
  } cases[] = {
      {{{}, ScriptFailure{-1743, u"refused"_qs, 0, 0}}, 0, -1743, "!!! descFromScript nil (0.0) ["},
      {{{}, ScriptFailure{{}, u"why"_qs, 0, 0}}, -3, -1753, "!!! descFromScript nil (-3.0) ["},
      {{}, 0, -1753, "!!! descFromScript nil (0.0) [(null)] from script \"tell app \"Music Keeper\" to go\""},
      {{{}, ScriptFailure{-2741, u"bad"_qs, 5, 3}}, 2, -2741, " ... offending code: [\"app\"]"},
      {{{}, ScriptFailure{{}, u"bad"_qs, 0, 0}}, 2, -1753, "(2.0) [(null)] from script \"tell app"},
      // No script could be made of the text: the waiting side runs into its deadline.
      {{}, 2, -1753, "!!! descFromScript nil (2.0) [(null)]"}};
  for (const auto &expected : cases) {
    host.answer(ScriptedHost::Answer([&] { return expected.outcome; }));
    EXPECT_FALSE(descFromScriptTimeoutSeconds(kScript, expected.timeout));
    EXPECT_EQ(lastScriptErrorNumber(), expected.number) << expected.line;
    EXPECT_TRUE(logContains(QString::fromUtf8(expected.line))) << qPrintable(logText());
    resetBMLog();
    QFile::remove(logFilePath());
  }
  // A failure without a stretch of code names none, and a success wipes the number.
  host.answer(ScriptFailure{-1728, u"gone"_qs, 0, 0});
  descFromScriptTimeoutSeconds(kScript, 1);
  EXPECT_FALSE(logContains(u"offending"_qs));
  host.answer(u"ok"_qs);
  EXPECT_EQ(stringFromScript(kScript), u"ok"_qs);
  EXPECT_EQ(lastScriptErrorNumber(), 0);
}

TEST_F(ScriptRunner, TimedScriptsGiveUpAtTheirLimitAndTheThreadRunsOn) {
  const double start = seconds();
  host.answerAfter(9, u"late"_qs);
  EXPECT_FALSE(descFromScriptTimeoutSeconds(kScript, 4));
  EXPECT_NEAR(seconds() - start, 4.0, 0.15);
  EXPECT_EQ(lastScriptErrorNumber(), -1753);
  EXPECT_EQ(bridgeState().abandoned.running(), 1);
  // The next timed script waits for its turn behind the one that hangs.
  host.answer(u"second"_qs);
  EXPECT_FALSE(descFromScriptTimeoutSeconds(kScript, 1));
  EXPECT_EQ(host.scripts().size(), 1);
  // An untimed one does not.
  EXPECT_EQ(stringFromScript(kScript), u"second"_qs);
  time.run(10);
  EXPECT_EQ(host.scripts().size(), 3);

  host.answerAfter(0.5, u"in time"_qs);
  const double again = seconds();
  const std::optional<ScriptDescriptor> result = descFromScriptTimeoutSeconds(kScript, 4);
  ASSERT_TRUE(result);
  EXPECT_EQ(result->text, u"in time"_qs);
  EXPECT_LT(seconds() - again, 1.0);
}

TEST_F(ScriptRunner, ACancelEndsTheWaitOfTheScriptInFlight) {
  const double start = seconds();
  host.answer(ScriptedHost::Answer([] {
    platform().clock->sleep(0.45);
    cancelCurrentScriptExecution();
    platform().clock->sleep(20);
    return ScriptOutcome();
  }));
  EXPECT_FALSE(descFromScriptTimeoutSeconds(kScript, 60));
  EXPECT_LT(seconds() - start, 1.0);
  EXPECT_EQ(lastScriptErrorNumber(), 0);
  EXPECT_TRUE(logContains(u"!!! descFromScript cancelled script \"%1\""_qs.arg(kSent)));
}

TEST_F(ScriptRunner, ACancelWithNothingInFlightMeetsTheNextScriptAndOnlyThat) {
  cancelCurrentScriptExecution();
  const double start = seconds();
  host.answerAfter(1, u"late"_qs);
  EXPECT_FALSE(descFromScriptTimeoutSeconds(kScript, 60));
  EXPECT_EQ(seconds(), start);
  EXPECT_EQ(lastScriptErrorNumber(), 0);
  time.run(2);
  EXPECT_EQ(host.scripts(), QStringList{kSent});

  // An untimed script keeps its result.
  cancelCurrentScriptExecution();
  host.answer(u"whole"_qs);
  EXPECT_EQ(stringFromScript(kScript), u"whole"_qs);
  EXPECT_EQ(logText().count(u"cancelled script"_qs), 2);
  // A failure that is cancelled reads as none.
  cancelCurrentScriptExecution();
  host.answer(ScriptFailure{-1728, u"gone"_qs, 0, 0});
  EXPECT_FALSE(stringFromScript(kScript));
  EXPECT_EQ(lastScriptErrorNumber(), 0);
  host.answer(ScriptFailure{-1728, u"gone"_qs, 0, 0});
  EXPECT_FALSE(stringFromScript(kScript));
  EXPECT_EQ(lastScriptErrorNumber(), -1728);
}

TEST_F(ScriptRunner, UntimedScriptsExcludeEachOtherAndTimedOnesTooButNotOneAnother) {
  Workers workers;
  for (int i = 0; i < 6; ++i) {
    host.answerAfter(1, u"x"_qs);
    workers.detach(u"script"_qs, [i] { descFromScriptTimeoutSeconds(kScript, i % 2 ? 30 : 0); });
  }
  EXPECT_TRUE(time.runUntil([&] { return workers.running() == 0; }, 60));
  EXPECT_EQ(host.scripts().size(), 6);
  EXPECT_EQ(host.most(), 2);
}

TEST_F(ScriptRunner, ItIsLockedWhileAnUntimedScriptRunsAndAskingDoesNotWait) {
  bool inUntimed = false, inTimed = true;
  host.answer(ScriptedHost::Answer([&] {
    inUntimed = isLocked();
    return ScriptOutcome();
  }));
  host.answer(ScriptedHost::Answer([&] {
    inTimed = isLocked();
    return ScriptedHost::resultOf(ScriptDescriptor::ofInteger(1));
  }));
  EXPECT_FALSE(isLocked());
  stringFromScript(kScript);
  EXPECT_TRUE(inUntimed);
  EXPECT_FALSE(isLocked());
  EXPECT_TRUE(descFromScriptTimeoutSeconds(kScript, 5));
  EXPECT_FALSE(inTimed);
}

TEST_F(ScriptRunner, AHandlersParametersReachTheLibraryInOnePieceEach) {
  const struct {
    QStringList parameters;
    const char *call;
  } cases[] = {{{}, "return f(\"\")"},
               {{u"a"_qs, u"b"_qs}, "return f(\"a\", \"b\")"},
               {{u"He said \"hi\""_qs, u"c\\"_qs}, "return f(\"He said \\\"hi\\\"\", \"c\\\")"}};
  for (const auto &expected : cases) {
    stringFromCompiledFunctionParams(u"f"_qs, expected.parameters);
    EXPECT_EQ(host.scripts().last().split(u'\n')[5], QString::fromUtf8(expected.call));
  }
  const QStringList lines = host.scripts().first().split(u'\n');
  EXPECT_EQ(lines.size(), 11);
  EXPECT_EQ(lines[1], u"set libPath to POSIX file \"%1/Internal_Functions_Music Keeper.scpt\""_qs.arg(
                          platform().bundle.resourceFolder));
}

TEST_F(ScriptRunner, AMissingScriptTableIsLookedForAgainAndABadOneIsNot) {
  services.bundle.resourceFolder = folder();
  setPlatform(services);
  EXPECT_FALSE(scriptNamed(u"iTunes_Quit"_qs));
  EXPECT_TRUE(logContains(u"!!! no scriptNamed 'iTunes_Quit'"_qs));
  writeFile(u"res_pack.db"_qs, "no property list");
  EXPECT_FALSE(scriptNamed(u"iTunes_Quit"_qs));
  QString error;
  const Dictionary table = Dictionary::make();
  table.set(Key(u"hello"_qs), u"say \"%@\" %d times"_qs);
  const QByteArray good = platform().propertyLists->write(table, SystemPropertyList::Format::Xml, &error);
  writeFile(u"res_pack.db"_qs, good);
  EXPECT_FALSE(scriptNamed(u"hello"_qs));
  resetBridge();
  EXPECT_EQ(stringFromScriptNameAndFormat(u"missing"_qs, 1), std::nullopt);
  EXPECT_TRUE(host.scripts().isEmpty());
  stringFromScriptNameAndFormat(u"hello"_qs, u"a \"b\""_qs, 3);
  EXPECT_EQ(host.scripts(), QStringList{u"say \"a \"b\"\" 3 times"_qs});
}

TEST_F(ScriptRunner, WithoutABridgeNothingRunsAndNothingWaits) {
  services.scriptHost = nullptr;
  setPlatform(services);
  const double start = seconds();
  setRunning(false);
  EXPECT_TRUE(isMusicAppRunning());
  EXPECT_FALSE(versionString());
  writeLibraryNow();
  EXPECT_TRUE(pathOfCurrentlyPlayingTrack().isNull());
  EXPECT_FALSE(refreshAndGetPathOfSongWithPID(u"0123456789ABCDEF"_qs));
  EXPECT_FALSE(removeSongWithPID(u"0123456789ABCDEF"_qs));
  EXPECT_EQ(seconds(), start);
  EXPECT_EQ(logText(), QString());
}

TEST(MusicApplications, EachSystemHasItsOwn) {
  const auto named = [](const char *shown) {
    return [shown](const QString &) { return QString::fromUtf8(shown); };
  };
  const struct {
    const char *kernel;
    int major, minor;
    const char *shown, *name, *identifier;
    bool isNew;
  } cases[] = {{"darwin", 10, 14, "Musik", "iTunes", "com.apple.iTunes", false},
               {"darwin", 10, 15, "Musik.app", "Musik", "com.apple.Music", true},
               {"darwin", 13, 2, "", "Music", "com.apple.Music", true},
               {"linux", 6, 1, "", "Music Keeper", "com.brinmoor.keeper", false}};
  for (const auto &expected : cases) {
    const MusicApplication found = musicApplicationOf(QString::fromUtf8(expected.kernel), expected.major,
                                                      expected.minor, named(expected.shown));
    EXPECT_EQ(found.name, QString::fromUtf8(expected.name));
    EXPECT_EQ(found.identifier, QString::fromUtf8(expected.identifier));
    EXPECT_EQ(found.preferenceDomain, found.identifier);
    EXPECT_EQ(found.isNewSystem, expected.isNew);
    EXPECT_EQ(found.libraryKey == u"media-folder-bookmark", expected.isNew);
  }
}
