#include "tests/ctl/ProgramFixture.h"

namespace {

const char kFirst[] = "000000000000000A", kSecond[] = "000000000000000b";
const char kIgnoreBoth[] = "ignore 000000000000000A 000000000000000b";

}  // namespace

class IgnoreCommandTest : public ProgramFixture {
 protected:
  /// Two tracks of one song; their IDs end in letters, one of them small.
  IgnoreCommandTest() {
    const QString file = writeLibrary({track(QStringLiteral("A"), QStringLiteral("One")),
                                       track(QStringLiteral("A"), QStringLiteral("One"))},
                                      QStringLiteral("home/Music/iTunes/iTunes Music Library.xml"));
    QByteArray bytes = readFile(file);
    bytes.replace("0000000000000001", kFirst).replace("0000000000000002", kSecond);
    writeFile(file, bytes);
    library = writeFile(QStringLiteral("library.xml"), bytes);
  }
  int command(const char *line, const std::string &input = {}) {
    return run(QString::fromUtf8(line) + QStringLiteral(" --library ") + library, input);
  }
  bool scanFindsTheGroup(const QStringList &more = {}) {
    execute(words("scan --json") + more);
    return out.find("\"duplicates\": [[") != std::string::npos;
  }
  int declarationsStored() const {
    int count = 0;
    for (const QString &key : preferences.keys(services.bundle.identifier)) {
      if (key.startsWith(QStringLiteral("NotDup-"))) count += int(preference(key).toArray().size());
    }
    return count;
  }

  /// The same library for commands in this process.
  QString library;
};

TEST_F(IgnoreCommandTest, WhatIsDeclaredIsHonouredByTheNextScanUntilItIsForgotten) {
  EXPECT_TRUE(scanFindsTheGroup());
  ASSERT_EQ(execute(words("ignore 000000000000000a 000000000000000B")), 0) << err;
  EXPECT_EQ(out, "Stored: 2 tracks are no duplicates of one another (000000000000000A, 000000000000000b)\n");
  EXPECT_FALSE(scanFindsTheGroup());
  ASSERT_EQ(execute(words("ignored list --json")), 0);
  EXPECT_EQ(out,
            "[[{\"pid\": \"000000000000000A\", \"artist\": \"A\", \"name\": \"One\"}, {\"pid\": "
            "\"000000000000000b\", \"artist\": \"A\", \"name\": \"One\"}]]\n");
  ASSERT_EQ(execute(words("ignored clear --yes")), 0) << err;
  EXPECT_EQ(out, "Forgotten: 1 declaration\n");
  EXPECT_TRUE(scanFindsTheGroup());
}

TEST_F(IgnoreCommandTest, AMediaFolderIsTheSameHoweverItIsWritten) {
  const QString media = folder(QStringLiteral("music"));
  const QString flag = QStringLiteral("--media");
  ASSERT_EQ(execute(words("ignore 000000000000000A 000000000000000b") + QStringList{flag, media + u'/'}), 0);
  EXPECT_FALSE(scanFindsTheGroup({flag, media}));
  EXPECT_TRUE(scanFindsTheGroup());
  EXPECT_EQ(execute(words("prefs get manualMediaPath")), 1) << out;
}

TEST_F(IgnoreCommandTest, OnlyTracksOfTheLibraryCanBeDeclaredAndNothingIsStoredElse) {
  const std::tuple<const char *, int, const char *> cases[] = {
      {"ignore", 2, "name at least two different tracks"},
      {"ignore 000000000000000A", 2, "name at least two different tracks"},
      {"ignore 000000000000000A 000000000000000a", 2, "name at least two different tracks"},
      {"ignore 000000000000000A 00000000000000b", 2,
       "\"00000000000000b\" is no persistent ID of 16 hexadecimal digits"},
      {"ignore 000000000000000A 000000000000000g", 2,
       "\"000000000000000g\" is no persistent ID of 16 hexadecimal digits"},
      {"ignore 000000000000000A 000000000000000b 00000000000000FF", 1,
       "the library holds no track 00000000000000FF; nothing was stored"},
      {"ignore 000000000000000A 000000000000000b --media /nowhere", 1,
       "the media folder \"/nowhere\" does not exist"},
      {"ignored", 2, "say what to do with the declarations"},
      {"ignored list --yes", 2, "say what to do with the declarations"},
      {"ignored forget", 2, "say what to do with the declarations"},
      {"ignored clear", 2, "say --yes to forget all declarations"},
  };
  for (const auto &[line, code, message] : cases) {
    EXPECT_EQ(command(line), code) << line;
    EXPECT_EQ(err.substr(0, err.find('\n')),
              QStringLiteral("tallyfenctl: %1").arg(QString::fromUtf8(message)).toStdString())
        << line;
    EXPECT_EQ(out, "") << line;
    EXPECT_EQ(declarationsStored(), 0) << line;
  }
}

TEST_F(IgnoreCommandTest, ThePersonIsAskedBeforeAllIsForgotten) {
  ASSERT_EQ(command(kIgnoreBoth), 0) << err;
  isAnswering = true;
  for (const char *answer : {"", "\n", "no\n"}) {
    EXPECT_EQ(command("ignored clear", answer), 1);
    EXPECT_EQ(err, "Forget 1 declaration? [y/N] tallyfenctl: nothing was changed\n");
    EXPECT_EQ(declarationsStored(), 1);
  }
  EXPECT_EQ(command("ignored clear", "y\n"), 0);
  EXPECT_EQ(declarationsStored(), 0);
}

TEST_F(IgnoreCommandTest, TheListNamesWhatTheLibraryKnowsAndSurvivesAStrangeStore) {
  ASSERT_EQ(command(kIgnoreBoth), 0) << err;
  QString key;
  for (const QString &each : preferences.keys(services.bundle.identifier)) {
    if (each.startsWith(QStringLiteral("NotDup-"))) key = each;
  }
  const Array declaration = preference(key).toArray().at(0).toArray().copyMembers(true);
  declaration.append(QStringLiteral("00000000000000FF"));
  const Array store = Array::make();
  store.append(declaration);
  setPreference(key, store);
  EXPECT_EQ(command("ignored list"), 0);
  EXPECT_EQ(out,
            "000000000000000A  A - One\n000000000000000b  A - One\n00000000000000FF  (not in the "
            "library)\n\n1 declaration\n");
  setPreference(key, QStringLiteral("nonsense"));
  EXPECT_EQ(command("ignored list --json"), 0);
  EXPECT_EQ(out, "[]\n");
}
