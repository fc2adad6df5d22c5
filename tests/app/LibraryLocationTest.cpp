#include "app/library/LibraryLocation.h"

#include <QDir>
#include <filesystem>

#include "app/library/LibraryFile.h"
#include "platform/FileAddress.h"
#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

namespace {

const QByteArray kMark = QByteArrayLiteral("<key>Music Folder</key>");

class LibraryLocation : public TestPlatform {
 protected:
  LibraryLocation() { iTunesInterface::setMusicLibraryXMLPath({}); }
  ~LibraryLocation() override {
    iTunesInterface::setMusicLibraryXMLPath({});
    iTunesInterface::resetLibraryCache();
  }

  /// A file in the home folder, so many days old.
  QString put(const QString &place, const QByteArray &bytes, double daysOld) {
    const QString path = writeFile(QStringLiteral("home/") + place, bytes);
    setAge(path, daysOld);
    return path;
  }

  void setAge(const QString &path, double daysOld) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const double unixSeconds = time.now().toUnix() - daysOld * 86400;
    file.setFileTime(QDateTime::fromMSecsSinceEpoch(qint64(unixSeconds * 1000)), QFile::FileModificationTime);
  }
};

}  // namespace

TEST_F(LibraryLocation, TheNewestLibraryOfTheLastThirtyDaysIsChosen) {
  put(QStringLiteral("Music/iTunes/Old.xml"), kMark, 31);
  EXPECT_EQ(iTunesInterface::currentMusicLibraryXMLPath(), QString());
  put(QStringLiteral("Music/iTunes/A.xml"), kMark, 20);
  const QString newest = put(QStringLiteral("Documents/iTunes/B.XML"), kMark, 3);
  put(QStringLiteral("Music/iTunes/Newer but none.xml"), QByteArrayLiteral("<plist/>"), 1);
  put(QStringLiteral("Music/iTunes/No extension"), kMark, 1);
  Date date;
  EXPECT_EQ(iTunesInterface::mostRecentMusicLibraryPath(&date), newest);
  EXPECT_NEAR(date.seconds, time.now().seconds - 3 * 86400, 1.0);
}

TEST_F(LibraryLocation, AFileIsALibraryByItsContentOrItsName) {
  const QByteArray fill(5000, ' ');
  const struct {
    const char16_t *name;
    QByteArray bytes;
    bool isChosen;
  } cases[] = {
      {u"front.xml", kMark + fill, true},
      {u"end.xml", fill + kMark, true},
      {u"middle.xml", fill + kMark + fill, true},
      {u"small.xml", kMark, true},
      {u"none.xml", fill, false},
      {u"empty.xml", {}, false},
      {u"iTunes Library.xml", fill, true},
      {u"itunes Library.xml", fill, false},
  };
  for (const auto &[name, bytes, isChosen] : cases) {
    const QString path = put(QStringLiteral("Music/iTunes/") + QString::fromUtf16(name), bytes, 1);
    EXPECT_EQ(iTunesInterface::currentMusicLibraryXMLPath(), isChosen ? path : QString()) << qPrintable(path);
    QFile::remove(path);
  }
}

TEST_F(LibraryLocation, TheSettingsOfTheMusicApplicationNameFurtherFolders) {
  const QString path = put(QStringLiteral("Elsewhere/My Library.xml"), kMark, 1);
  const Array recent = Array::make();
  recent.append(fileAddressOfPath(path));
  preferences.setValue(QStringLiteral("com.apple.iApps"), QStringLiteral("iTunesRecentDatabases"), recent);
  EXPECT_EQ(iTunesInterface::currentMusicLibraryPathFromPrefs(), folder(QStringLiteral("home/Elsewhere")));
  EXPECT_EQ(iTunesInterface::currentMusicLibraryXMLPath(), path);
}

TEST_F(LibraryLocation, WrongSettingsOfTheMusicApplicationNameNothing) {
  const Array relative = Array::make();
  relative.append(QStringLiteral("Music"));
  for (const Value &wrong :
       {Value(7), Value(QStringLiteral("text")), Value(Dictionary::make()), Value(relative)}) {
    preferences.setValue(QStringLiteral("com.apple.iApps"), QStringLiteral("iTunesRecentDatabases"), wrong);
    EXPECT_EQ(iTunesInterface::currentMusicLibraryPathFromPrefs(), QString());
  }
}

TEST_F(LibraryLocation, TheFileNamedByHandIsTakenWhateverItsAge) {
  put(QStringLiteral("Music/iTunes/A.xml"), kMark, 1);
  const QString old = put(QStringLiteral("old export"), kMark, 4000);
  iTunesInterface::setMusicLibraryXMLPath(old);
  EXPECT_EQ(iTunesInterface::currentMusicLibraryXMLPath(), old);
  ASSERT_TRUE(iTunesInterface::currentMusicLibraryDate());
}

TEST_F(LibraryLocation, TheLibraryNamesTheMediaFolder) {
  const struct {
    const char16_t *music, *media, *library, *path;
  } cases[] = {
      {u"file:///M/", u"file:///N/", u"/home/L", u"/M"},
      {nullptr, u"file:///N%20O/", u"/home/L", u"/N O"},
      {u"", u"file:///N/", u"/home/L", u""},
      {u"file:///M", nullptr, u"/Volumes/Disk/L", u"/Volumes/Disk/M"},
      {u"file:///Volumes/X/M", nullptr, u"/Volumes/Disk/L", u"/Volumes/X/M"},
      {nullptr, nullptr, u"/home/L", u""},
  };
  for (const auto &[music, media, library, path] : cases) {
    const Dictionary root = Dictionary::make();
    if (music) root.set(keys::MusicFolder, QString::fromUtf16(music));
    if (media) root.set(keys::MediaFolder, QString::fromUtf16(media));
    EXPECT_EQ(iTunesInterface::mediaFolderPathFromDictionaryLibraryPath(root, QString::fromUtf16(library)),
              QString::fromUtf16(path));
  }
}

TEST_F(LibraryLocation, AnUnchangedFileGivesTheSameLibraryAndAChangedOneANewOne) {
  const QByteArray text = QByteArrayLiteral("<plist><dict><key>Tracks</key><dict></dict></dict></plist>");
  const QString path = put(QStringLiteral("L.xml"), text, 2);
  QString error;
  const Dictionary first = iTunesInterface::getMusicLibraryDictionaryAtPathWithError(path, &error);
  ASSERT_EQ(error, QString());
  EXPECT_TRUE(first.isSame(iTunesInterface::getMusicLibraryDictionaryAtPathWithError(path, &error)));
  setAge(path, 1);
  EXPECT_FALSE(first.isSame(iTunesInterface::getMusicLibraryDictionaryAtPathWithError(path, &error)));
  EXPECT_EQ(iTunesInterface::musicLibraryPath(), folder(QStringLiteral("home")));
}

TEST_F(LibraryLocation, AFileWithoutTracksIsRefusedEachTime) {
  const QString path = put(QStringLiteral("L.xml"), QByteArrayLiteral("<plist><dict></dict></plist>"), 2);
  for (int load = 1; load <= 2; ++load) {
    QString error;
    EXPECT_TRUE(iTunesInterface::getMusicLibraryDictionaryAtPathWithError(path, &error).isNull());
    EXPECT_FALSE(error.isEmpty()) << load;
  }
}

TEST_F(LibraryLocation, TheSettingsNameTheOtherParserWhileOneRuns) {
  QList<bool> stored;
  preferences.setObserver([&](const QString &, const QString &key) {
    if (key == QStringLiteral("noSystemDeserialize")) stored.append(preference(key).toBool());
  });
  const QString path = put(QStringLiteral("L.xml"), QByteArrayLiteral("<plist><dict></dict></plist>"), 2);
  QString error;
  iTunesInterface::getMusicLibraryDictionaryAtPathWithError(path, &error);
  EXPECT_EQ(stored, (QList<bool>{true, false}));
}

TEST_F(LibraryLocation, TheDiagnosisTellsWhereAFileIsBad) {
  const QByteArray bad = QByteArrayLiteral(
      "<plist><k\xC3\xA9y>a\xFF"
      "b</dict>");
  const QString text = iTunesInterface::validateXMLAtPath(put(QStringLiteral("bad.xml"), bad, 1));
  EXPECT_TRUE(text.contains(QStringLiteral("Non-ASCII tag at offset 7")));
  EXPECT_TRUE(text.contains(QStringLiteral("Non-UTF8 value at offset 13")));
  const QByteArray good = QByteArrayLiteral("<?xml version=\"1.0\"?><plist version=\"1.0\"><dict/></plist>");
  EXPECT_EQ(iTunesInterface::validateXMLAtPath(put(QStringLiteral("good.xml"), good, 1)), QString());
}
