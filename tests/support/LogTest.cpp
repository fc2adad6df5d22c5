#include <sys/resource.h>
#include <unistd.h>
#include <zip.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <csignal>
#include <thread>

#include "support/ActivitySample.h"
#include "support/BMLog.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

using Log = TestPlatform;

/// What a call writes to the console.
template <class Call>
QString consoleOf(Call call) {
  testing::internal::CaptureStderr();
  call();
  return QString::fromStdString(testing::internal::GetCapturedStderr());
}

/// The log's lines without their times, each of which is checked.
QStringList messages() {
  static const QRegularExpression kEntry(
      u"^\\[\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\] (.*)$"_qs);
  QStringList result;
  const QStringList lines = QString::fromUtf8(QByteArray([] {
                              QFile file(logFilePath());
                              (void)file.open(QIODevice::ReadOnly);
                              return file.readAll();
                            }()))
                                .split(u'\n');
  for (const QString &line : lines) {
    const QRegularExpressionMatch match = kEntry.match(line);
    EXPECT_TRUE(match.hasMatch()) << line.toStdString();
    result += match.captured(1);
  }
  return result;
}

QByteArray zippedFile(const QString &path, const QString &name) {
  zip_t *archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, nullptr);
  if (!archive) return {};
  QByteArray bytes(100000, 0);
  zip_file_t *file = zip_fopen(archive, name.toUtf8().constData(), 0);
  bytes.truncate(file ? zip_fread(file, bytes.data(), quint64(bytes.size())) : 0);
  if (file) zip_fclose(file);
  zip_discard(archive);
  return bytes;
}

}  // namespace

TEST_F(Log, TwoRunsWithACrashBetweenLeaveOneText) {
  BMLog("run %d", 1);
  BMLog("song %@", u"\u00e9\U0001F3B5"_qs);
  resetBMLog();  // the process is gone without a word
  setPlatform(services);
  BMLog("run %d", 2);
  BMLogFlushFinal(false);
  BMLog("after");
  EXPECT_EQ(logFilePath(), folder(u"support/Tallyfen/Log-1.0-(100).txt"_qs));
  EXPECT_EQ(messages(), (QStringList{u"run 1"_qs, u"song \u00e9\U0001F3B5"_qs, u"run 2"_qs,
                                     u"BMLogFlushFinal 0"_qs, u"after"_qs}));
  EXPECT_EQ(preference(u"logDirectory"_qs).toText(), folder(u"support/Tallyfen"_qs));
}

TEST_F(Log, AVersionHasItsOwnFileAndAMissingFolderIsUnderHome) {
  BMLog("old");
  services.bundle.version = u"101"_qs;
  services.bundle.executable.clear();
  services.folders.applicationSupport.clear();
  setPlatform(services);
  resetBMLog();
  BMLog("new");
  EXPECT_EQ(logFilePath(),
            folder(u"home/Library/Application Support/org.tallyfen.Test/Log-1.0-(101).txt"_qs));
  EXPECT_EQ(messages(), QStringList{u"new"_qs});
  EXPECT_TRUE(readFile(folder(u"support/Tallyfen/Log-1.0-(100).txt"_qs)).endsWith("] old"));
}

TEST_F(Log, WhatCannotBeWrittenGoesToTheConsole) {
  EXPECT_EQ(consoleOf([] { BMLog(nullptr); }), u"BM> (null)\n"_qs);
  writeFile(u"support/Tallyfen"_qs, "a file where the folder must be");
  EXPECT_EQ(consoleOf([] { BMLog("lost %d", 7); }), u"BM> lost 7\n"_qs);
  QFile::remove(folder(u"support/Tallyfen"_qs));
  EXPECT_EQ(consoleOf([] { BMLog("kept"); }), QString());
  EXPECT_EQ(messages(), QStringList{u"kept"_qs});
  resetBMLog();
  QFile::remove(logFilePath());
  QFile::link(u"/dev/full"_qs, logFilePath());
  EXPECT_EQ(consoleOf([] { BMLog("full"); }), u"BM> full\n"_qs);
}

TEST_F(Log, AnEntryThatADiskCannotHoldLeavesNoPart) {
  BMLog("first");
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  rlimit small = before;
  small.rlim_cur = 2000;
  setrlimit(RLIMIT_FSIZE, &small);
  const QString console = consoleOf([] { BMLog("long %@", QString(3000, u'x')); });
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_TRUE(console.startsWith(u"BM> long xxx"));
  BMLog("last");
  EXPECT_EQ(messages(), (QStringList{u"first"_qs, u"last"_qs}));
}

TEST_F(Log, TheArchiveTakesThePlaceOfTextAndOlderArchive) {
  const QString text = logFilePath();
  const QString archive = folder(u"support/Tallyfen/Log-1.0-(100).zip"_qs);
  writeFile(archive, "an older one");
  BMLog("entry");
  BMLogFlushFinal(true);
  EXPECT_FALSE(QFile::exists(text));
  const QByteArray kept = zippedFile(archive, u"Log-1.0-(100).txt"_qs);
  EXPECT_TRUE(kept.contains("] entry\n") && kept.endsWith("] BMLogFlushFinal 1")) << kept.toStdString();
  BMLog("next run");
  EXPECT_EQ(messages(), QStringList{u"next run"_qs});
}

TEST_F(Log, TheTextStaysWhenTheArchiveCannotBeMade) {
  BMLog("entry");
  QDir().mkpath(folder(u"support/Tallyfen/Log-1.0-(100).zip/not empty"_qs));
  BMLogFlushFinal(true);
  EXPECT_TRUE(logContains(u"] entry\n"_qs) && logContains(u"the log stays as text"_qs));
}

TEST_F(Log, ThreadsDoNotTearEachOthersEntries) {
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([thread] {
      for (int entry = 0; entry < 200; ++entry) BMLog("%d-%@", thread, QString(300, QChar(u'a' + thread)));
    });
  }
  for (std::thread &thread : threads) thread.join();
  const QStringList entries = messages();
  EXPECT_EQ(entries.size(), 800);
  for (const QString &entry : entries) EXPECT_EQ(entry.size(), 302);
}

TEST_F(Log, ASampleOfAProcessNamesItsTasks) {
  EXPECT_EQ(BMUtility::logActivityForProcessSeconds(0, 1), ESRCH);
  EXPECT_EQ(BMUtility::logActivityForProcessSeconds(getpid(), 2), 0);
  EXPECT_TRUE(logContains(u"Sample of PID %1:\n"_qs.arg(getpid())));
  EXPECT_TRUE(logContains(u"of 5: %1 support_tests, R"_qs.arg(getpid()))) << logText().toStdString();
}
