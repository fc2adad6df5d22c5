#include "tests/ctl/CommandFixture.h"

using PrefsCommandTest = CommandFixture;

TEST_F(PrefsCommandTest, AValueIsStoredWithTheTypeThatBelongsToItsKey) {
  const std::tuple<const char *, const char *, Value> cases[] = {
      {"noMatchArtist", "yes", true},
      {"noMatchArtist", "0", false},
      {"allowedDurationVariation", "25", 25},
      {"allowedDurationVariation", "-3", -3},
      {"relatedHeight", "10.5", 10.5},
      {"manualMediaPath", "true", QStringLiteral("true")},
      {"manualMediaPath", "17", QStringLiteral("17")},
      {"preferAudioData15", "17", 17},
      {"preferAudioData15", "x", QStringLiteral("x")},
  };
  for (const auto &[key, text, expected] : cases) {
    ASSERT_EQ(run(QStringLiteral("prefs set %1 %2").arg(QString::fromUtf8(key), QString::fromUtf8(text))), 0)
        << err;
    const Value stored = preference(QString::fromUtf8(key));
    EXPECT_TRUE(isEqual(stored, expected) && stored.type() == expected.type()) << key << " " << text;
  }
}

TEST_F(PrefsCommandTest, WrongUseChangesNothingAndShowsTheUsage) {
  for (const char *line :
       {"prefs", "prefs list x", "prefs get", "prefs get a b", "prefs set busy", "prefs set nonsense 1",
        "prefs set noMatchArtist 7", "prefs set noMatchArtist perhaps",
        "prefs set allowedDurationVariation abc", "prefs set allowedDurationVariation true",
        "prefs unset nonsense", "prefs forget busy", "prefs list --rows"}) {
    EXPECT_EQ(run(QString::fromUtf8(line)), 2) << line;
    EXPECT_NE(err.find("usage: tallyfenctl prefs "), std::string::npos) << line;
    EXPECT_EQ(out, "") << line;
  }
  EXPECT_EQ(preferences.keys(services.bundle.identifier).size(), 2);
}

TEST_F(PrefsCommandTest, GetTellsAnAbsentKeyFromAStoredOne) {
  EXPECT_EQ(run(QStringLiteral("prefs get manualMediaPath")), 1);
  EXPECT_EQ(err, "tallyfenctl: manualMediaPath is not set\n");
  setPreference(QStringLiteral("manualMediaPath"), QStringLiteral("/m"));
  EXPECT_EQ(run(QStringLiteral("prefs get manualMediaPath")), 0);
  EXPECT_EQ(out, "/m\n");
  EXPECT_EQ(run(QStringLiteral("prefs unset manualMediaPath")), 0);
  EXPECT_EQ(run(QStringLiteral("prefs get manualMediaPath")), 1);
}

TEST_F(PrefsCommandTest, ListTellsOfAValueOfTheWrongType) {
  setPreference(QStringLiteral("matchAlbum"), QStringLiteral("no"));
  EXPECT_EQ(run(QStringLiteral("prefs list")), 0);
  EXPECT_EQ(out, "preferAudioFileBitRate = 160\nallowedDurationVariation = 10\nmatchAlbum = no\n");
  EXPECT_EQ(err,
            "tallyfenctl: the setting matchAlbum should be true or false and holds something else; read as "
            "false\n");
  EXPECT_EQ(run(QStringLiteral("prefs list --json")), 0);
  EXPECT_EQ(out,
            "{\"preferAudioFileBitRate\": 160, \"allowedDurationVariation\": 10, \"matchAlbum\": \"no\"}\n");
}

TEST_F(PrefsCommandTest, ResetKeepsWhatIsNotTheProgramsOwn) {
  for (const char *key : {"_sandboxBookmarks", "NSWindow", "matchAlbum"})
    setPreference(QString::fromUtf8(key), 1);
  EXPECT_EQ(run(QStringLiteral("prefs reset")), 0);
  EXPECT_FALSE(preference(QStringLiteral("NSWindow")).isNull());
  EXPECT_FALSE(preference(QStringLiteral("_sandboxBookmarks")).isNull());
  EXPECT_TRUE(preference(QStringLiteral("matchAlbum")).isNull());
  EXPECT_EQ(preference(QStringLiteral("allowedDurationVariation")).toInteger(), 10);
}

TEST_F(PrefsCommandTest, ASettingMadeBeforeTheFirstLaunchOutlivesIt) {
  setPreference(QStringLiteral("preferAudioFileBitRate"), Value());
  ASSERT_EQ(run(QStringLiteral("prefs set matchAlbum true")), 0);
  EXPECT_EQ(preference(QStringLiteral("preferAudioFileBitRate")).toInteger(), 160);
  EXPECT_TRUE(preference(QStringLiteral("matchAlbum")).toBool());
}

TEST_F(PrefsCommandTest, AStoreThatCannotBeWrittenIsReported) {
  preferences.failSynchronize(QStringLiteral("No space left on device"));
  for (const char *line : {"prefs set busy true", "prefs unset busy", "prefs reset"}) {
    EXPECT_EQ(run(QString::fromUtf8(line)), 1) << line;
    EXPECT_EQ(err, "tallyfenctl: the settings were not saved: No space left on device\n") << line;
  }
}
