#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <csignal>
#include <thread>

#include "platform/qt/FilePreferenceStore.h"
#include "platform/qt/LibplistPropertyList.h"
#include "platform/qt/OverlayPreferenceStore.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

const QString kDomain = u"org.tallyfen.Test"_qs;

class FilePreferences : public TestPlatform {
 protected:
  FilePreferenceStore open() const { return FilePreferenceStore(folder(u"config"_qs), propertyLists.get()); }
  QString file() const { return folder(u"config/org.tallyfen.Test.plist"_qs); }
};

}  // namespace

TEST_F(FilePreferences, EveryTypeAndTheOrderOfKeysOutliveTheStore) {
  const Dictionary nested = Dictionary::make();
  nested.set(Key(u"when"), Date{12});
  const QList<std::pair<QString, Value>> all = {{u"zoom"_qs, 1.5},
                                                {u"artist"_qs, u"Bj\u00f6rk"_qs},
                                                {u"gone"_qs, true},
                                                {u"count"_qs, qint64(1) << 40},
                                                {u"data"_qs, QByteArray("\0x", 2)},
                                                {u"nested"_qs, nested},
                                                {u"off"_qs, false}};
  {
    FilePreferenceStore store = open();
    for (const auto &[key, value] : all) store.setValue(kDomain, key, value);
    store.setValue(kDomain, u"gone"_qs, {});
    QString error;
    EXPECT_TRUE(store.synchronize(&error)) << error.toStdString();
  }
  const FilePreferenceStore store = open();
  EXPECT_EQ(store.keys(kDomain),
            (QStringList{u"zoom"_qs, u"artist"_qs, u"count"_qs, u"data"_qs, u"nested"_qs, u"off"_qs}));
  for (const auto &[key, value] : all) {
    const Value expected = key == u"gone" ? Value() : value;
    EXPECT_TRUE(isEqual(store.value(kDomain, key), expected)) << key.toStdString();
  }
  EXPECT_TRUE(store.value(kDomain, u"gone"_qs).isNull() && store.value(u"other"_qs, u"zoom"_qs).isNull());
}

TEST_F(FilePreferences, AChangeInsideAReadValueDoesNotReachTheStore) {
  FilePreferenceStore store = open();
  const Array list = Array::make();
  list.append(1);
  store.setValue(kDomain, u"list"_qs, list);
  list.append(2);
  store.value(kDomain, u"list"_qs).toArray().append(3);
  EXPECT_EQ(store.value(kDomain, u"list"_qs).toArray().size(), 1);
}

TEST_F(FilePreferences, TwoProcessesLoseNoneOfEachOthersChanges) {
  constexpr int kEach = 60;
  FilePreferenceStore store = open();
  store.setValue(kDomain, u"start"_qs, true);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  const auto writeAll = [](FilePreferenceStore &mine, const QString &name) {
    for (int number = 0; number < kEach; ++number)
      mine.setValue(kDomain, name + QString::number(number), number);
  };
  if (child == 0) {
    FilePreferenceStore other = open();
    writeAll(other, u"child"_qs);
    _exit(0);
  }
  writeAll(store, u"parent"_qs);
  int status = -1;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(store.keys(kDomain).size(), 1 + 2 * kEach);
  EXPECT_EQ(open().keys(kDomain).size(), 1 + 2 * kEach);
}

TEST_F(FilePreferences, ADamagedFileIsSetAsideBeforeTheFirstWrite) {
  for (const QByteArray &damage : {QByteArray("<plist><dict><key>a"), QByteArray(), QByteArray("bplist00")}) {
    writeFile(file(), damage);
    FilePreferenceStore store = open();
    EXPECT_TRUE(store.value(kDomain, u"a"_qs).isNull());
    EXPECT_EQ(readFile(file()), damage);
    store.setValue(kDomain, u"a"_qs, 1);
    EXPECT_EQ(open().value(kDomain, u"a"_qs).toInteger(), 1);
  }
  EXPECT_EQ(readFile(file() + u".damaged"_qs), "<plist><dict><key>a");
  EXPECT_EQ(readFile(file() + u".damaged3"_qs), "bplist00");
}

TEST_F(FilePreferences, WhatAFullDiskRefusesIsKeptAndWrittenLater) {
  FilePreferenceStore store = open();
  store.setValue(kDomain, u"old"_qs, 1);
  const QByteArray before = readFile(file());
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit normal = {};
  getrlimit(RLIMIT_FSIZE, &normal);
  rlimit small = normal;
  small.rlim_cur = 100;
  setrlimit(RLIMIT_FSIZE, &small);
  store.setValue(kDomain, u"new"_qs, 2);
  QString error;
  const bool synchronized = store.synchronize(&error);
  setrlimit(RLIMIT_FSIZE, &normal);
  EXPECT_FALSE(synchronized);
  EXPECT_TRUE(error.contains(file())) << error.toStdString();
  EXPECT_EQ(readFile(file()), before);
  EXPECT_EQ(store.value(kDomain, u"new"_qs).toInteger(), 2);
  EXPECT_TRUE(store.synchronize(&error));
  EXPECT_EQ(open().value(kDomain, u"new"_qs).toInteger(), 2);
}

TEST_F(FilePreferences, AFolderThatCannotBeMadeCostsOnlyThePermanence) {
  FilePreferenceStore store(writeFile(u"blocked"_qs, "a file") + u"/tallyfen"_qs, propertyLists.get());
  store.setValue(kDomain, u"key"_qs, u"value"_qs);
  EXPECT_EQ(store.value(kDomain, u"key"_qs).toText(), u"value"_qs);
  QString error;
  EXPECT_FALSE(store.synchronize(&error));
  EXPECT_TRUE(error.contains(u"blocked")) << error.toStdString();
}

TEST_F(FilePreferences, AValueThatCannotBeWrittenDoesNotBlockTheOthers) {
  FilePreferenceStore store = open();
  store.setValue(kDomain, u"bad"_qs, QString(QChar(0)));
  store.setValue(kDomain, u"good"_qs, 1);
  EXPECT_EQ(open().value(kDomain, u"good"_qs).toInteger(), 1);
  QString error;
  EXPECT_FALSE(store.synchronize(&error));
  EXPECT_TRUE(error.contains(u"bad")) << error.toStdString();
}

TEST_F(FilePreferences, TheObserverMayAskTheStore) {
  FilePreferenceStore store = open();
  QString seen;
  store.setObserver([&](const QString &domain, const QString &key) {
    seen += key + u'=' + store.value(domain, key).toText();
  });
  store.setValue(kDomain, u"key"_qs, u"value"_qs);
  EXPECT_EQ(seen, u"key=value"_qs);
}

TEST_F(FilePreferences, AnOverlayHidesWithoutWriting) {
  preferences.setValue(kDomain, u"kept"_qs, 1);
  preferences.setValue(kDomain, u"hidden"_qs, 2);
  OverlayPreferenceStore overlay(&preferences, {u"through"_qs});
  overlay.setValue(kDomain, u"kept"_qs, 10);
  overlay.setValue(kDomain, u"hidden"_qs, {});
  overlay.setValue(kDomain, u"added"_qs, 3);
  overlay.setValue(kDomain, u"through"_qs, 4);
  EXPECT_EQ(overlay.value(kDomain, u"kept"_qs).toInteger(), 10);
  EXPECT_EQ(overlay.keys(kDomain), (QStringList{u"kept"_qs, u"through"_qs, u"added"_qs}));
  EXPECT_EQ(preferences.value(kDomain, u"kept"_qs).toInteger(), 1);
  EXPECT_EQ(preferences.keys(kDomain), (QStringList{u"kept"_qs, u"hidden"_qs, u"through"_qs}));
}
