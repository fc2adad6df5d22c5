#include <csignal>

#include "tests/ctl/ProgramFixture.h"

using ProgramTest = ProgramFixture;

TEST_F(ProgramTest, SettingsOutliveTheProcess) {
  EXPECT_EQ(execute(words("prefs set allowedDurationVariation 3")), 0) << err;
  EXPECT_EQ(execute(words("prefs get allowedDurationVariation")), 0);
  EXPECT_EQ(out, "3\n");
  EXPECT_EQ(execute(words("prefs reset")), 0);
  EXPECT_EQ(execute(words("prefs list --json")), 0);
  EXPECT_EQ(
      out,
      "{\"allowedDurationVariation\": 10, \"preferAudioFileBitRate\": 160, \"ignoreDurationMinimum\": 30, "
      "\"preferInfoTypes\": [\"0\", \"1\", \"2\", \"3\", \"4\", \"5\", \"6\", \"7\"]}\n");
}

TEST_F(ProgramTest, SettingsThatCannotBeSavedAreReported) {
  writeFile(QStringLiteral("home/.config"), "a file in the folder's place");
  EXPECT_EQ(execute(words("prefs set allowedDurationVariation 3")), 1);
  EXPECT_NE(err.find("tallyfenctl: the settings were not saved: "), std::string::npos) << err;
}

TEST_F(ProgramTest, OutputThatCannotBeWrittenIsAFailure) {
  QProcess process;
  process.setStandardOutputFile(QStringLiteral("/dev/full"));
  start(&process, words("help"));
  ASSERT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitCode(), 1);
  EXPECT_EQ(process.readAllStandardError(), "tallyfenctl: the output could not be written\n");
}

TEST_F(ProgramTest, EachRequestIsAnsweredBeforeTheNextIsGiven) {
  QProcess process;
  start(&process, words("inspect text"));
  for (int id = 0; id < 2; ++id) {
    process.write("{\"id\": " + QByteArray::number(id) + ", \"op\": \"CRC\", \"args\": [\"00\"]}\n");
    ASSERT_TRUE(process.waitForReadyRead());
    EXPECT_EQ(process.readAllStandardOutput(), "{\"id\": " + QByteArray::number(id) + ", \"result\": 0}\n");
  }
  process.closeWriteChannel();
  ASSERT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitCode(), 0);
}

TEST_F(ProgramTest, AnInterruptedScanEndsOrderly) {
  const QString library = writeLibrary({track(QStringLiteral("Abc"), QStringLiteral("One")),
                                        track(QStringLiteral("Abc"), QStringLiteral("One"))});
  QProcess process;
  start(&process, {QStringLiteral("scan"), QStringLiteral("--json"), QStringLiteral("--library"), library});
  ASSERT_TRUE(process.waitForStarted());
  // The handler stands once the log does; the scan itself lasts at least one tick of half a second.
  const QString log = folder(QStringLiteral("home/.data/tallyfenctl"));
  while (!QFile::exists(log) && process.state() == QProcess::Running) process.waitForFinished(5);
  process.waitForFinished(50);
  ::kill(pid_t(process.processId()), SIGINT);
  ASSERT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(process.exitCode(), 1);
  EXPECT_EQ(process.readAllStandardError(), "tallyfenctl: cancelled\n");
}
