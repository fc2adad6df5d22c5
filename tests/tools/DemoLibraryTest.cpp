#include <QCryptographicHash>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>

#include "platform/qt/LibplistPropertyList.h"
#include "tools/demo/LargeLibrary.h"
#include "values/Keys.h"

namespace {

// One demo library for all tests of this file: they only read it.
class DemoLibrary : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    home = new QTemporaryDir;
    summary = makeDemoLibrary(home->path(), 1);
  }
  static void TearDownTestSuite() {
    delete home;
    home = nullptr;
  }
  void SetUp() override { ASSERT_EQ(summary.error, QString()); }

  static inline QTemporaryDir *home = nullptr;
  static inline DemoSummary summary;
};

QByteArray bytesOf(const QString &path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Dictionary parsed(const QString &libraryFile) {
  QString error;
  const Value root = LibplistPropertyList().parse(bytesOf(libraryFile), &error);
  EXPECT_EQ(error, QString());
  return root.toDictionary();
}

QString pathOfTrack(const Dictionary &track) {
  const QString address = track.value(keys::Location).toText();
  const QString head = QStringLiteral("file://localhost");
  return address.startsWith(head) ? QUrl::fromPercentEncoding(address.mid(head.size()).toUtf8()) : QString();
}

QStringList filesBelow(const QString &folder) {
  QStringList files;
  for (QDirIterator each(folder, QDir::Files, QDirIterator::Subdirectories); each.hasNext();)
    files += each.next();
  files.sort();
  return files;
}

QByteArray digestOf(const QString &folder) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  for (const QString &file : filesBelow(folder)) {
    hash.addData(file.toUtf8());
    hash.addData(bytesOf(file));
  }
  return hash.result();
}

QByteArray outputOf(const QString &program, const QStringList &arguments) {
  QProcess process;
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished(60000)) << program.toStdString();
  return process.readAllStandardOutput() + process.readAllStandardError();
}

}  // namespace

TEST_F(DemoLibrary, EveryEntryHasItsFileOfTheSizeThatItTellsOrIsMissing) {
  const Dictionary library = parsed(summary.libraryFile);
  EXPECT_EQ(library.value(keys::Playlists).toArray().size(), summary.playlists);
  const Dictionary tracks = library.value(keys::Tracks).toDictionary();
  EXPECT_EQ(tracks.size(), summary.tracks);
  int missing = 0;
  QSet<QString> known, identities;
  for (const DictionaryEntry &entry : tracks) {
    const Dictionary track = entry.value.toDictionary();
    identities += track.value(keys::PersistentID).toText();
    const QString path = pathOfTrack(track);
    if (path.isEmpty()) continue;
    EXPECT_FALSE(known.contains(path)) << path.toStdString();
    known += path;
    if (!QFile::exists(path)) {
      ++missing;
    } else {
      EXPECT_EQ(QFileInfo(path).size(), track.value(keys::Size).toInteger()) << path.toStdString();
    }
  }
  EXPECT_EQ(identities.size(), summary.tracks);
  EXPECT_EQ(missing, summary.missingTracks);
  int orphans = 0;
  for (const QString &file : filesBelow(mediaFolderOf(home->path()))) orphans += known.contains(file) ? 0 : 1;
  EXPECT_EQ(orphans, summary.orphans);
}

TEST_F(DemoLibrary, ItsFilesPlayInAnIndependentPlayerForAsLongAsTheLibrarySays) {
  const QString player = QStandardPaths::findExecutable(QStringLiteral("ffmpeg"));
  const QString prober = QStandardPaths::findExecutable(QStringLiteral("ffprobe"));
  ASSERT_FALSE(player.isEmpty() || prober.isEmpty()) << "ffmpeg is not installed";
  const Dictionary tracks = parsed(summary.libraryFile).value(keys::Tracks).toDictionary();
  int number = 0;
  for (const DictionaryEntry &entry : tracks) {
    const Dictionary track = entry.value.toDictionary();
    const QString path = pathOfTrack(track);
    if (++number % 17 != 0 || !QFile::exists(path)) continue;
    const QStringList quiet = {QStringLiteral("-v"), QStringLiteral("error")};
    EXPECT_EQ(outputOf(player, quiet + QStringList{QStringLiteral("-i"), path, QStringLiteral("-f"),
                                                   QStringLiteral("null"), QStringLiteral("-")}),
              QByteArray())
        << path.toStdString();
    const QByteArray told =
        outputOf(prober, quiet + QStringList{QStringLiteral("-show_entries"),
                                             QStringLiteral("format=duration:format_tags"),
                                             QStringLiteral("-of"), QStringLiteral("json"), path});
    const QJsonObject format = QJsonDocument::fromJson(told)[QStringLiteral("format")].toObject();
    EXPECT_NEAR(format[QStringLiteral("duration")].toString().toDouble() * 1000,
                track.value(keys::TotalTime).toDouble(), 60)
        << path.toStdString();
    const QJsonObject tags = format[QStringLiteral("tags")].toObject();
    EXPECT_EQ(tags[QStringLiteral("title")].toString(), track.value(keys::Name).toText());
    EXPECT_EQ(tags[QStringLiteral("artist")].toString(), track.value(keys::Artist).toText());
    EXPECT_EQ(tags[QStringLiteral("album")].toString(), track.value(keys::Album).toText());
  }
}

TEST_F(DemoLibrary, AScanFindsExactlyThePromisedDuplicatesAndNames) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("HOME"), home->path());
  for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"}) {
    environment.insert(QString::fromLatin1(name),
                       home->filePath(QStringLiteral(".") + QString::fromLatin1(name)));
  }
  QProcess scan;
  scan.setProcessEnvironment(environment);
  scan.start(QStringLiteral(TALLYFENCTL), {QStringLiteral("scan"), QStringLiteral("--json")});
  ASSERT_TRUE(scan.waitForFinished(60000));
  EXPECT_EQ(scan.exitCode(), 1) << scan.readAllStandardError().toStdString();
  const QJsonObject report = QJsonDocument::fromJson(scan.readAllStandardOutput()).object();
  EXPECT_EQ(report[QStringLiteral("tracks")].toInt(), summary.tracks - summary.droppedTracks);
  int rows = 0;
  const QJsonArray groups = report[QStringLiteral("duplicates")].toArray();
  for (const QJsonValue &group : groups) rows += int(group.toArray().size());
  EXPECT_EQ(groups.size(), summary.duplicateGroups);
  EXPECT_EQ(rows, summary.duplicateRows);
  int artists = 0, albums = 0;
  for (const QJsonValue &name : report[QStringLiteral("names")].toArray())
    ++(name[u"type"].toString() == u"artist" ? artists : albums);
  EXPECT_EQ(artists, summary.inconsistentArtists);
  EXPECT_EQ(albums, summary.inconsistentAlbums);
}

TEST_F(DemoLibrary, TheSameSeedGivesTheSameBytesAndAnotherSeedOthers) {
  const QByteArray first = digestOf(home->path());
  makeDemoLibrary(home->path(), 1);
  EXPECT_EQ(digestOf(home->path()), first);
  QTemporaryDir large;
  QByteArray digests[3];
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(makeLargeLibrary(large.path(), 2000, i == 2 ? 8 : 7).error, QString());
    digests[i] = digestOf(large.path());
  }
  EXPECT_EQ(digests[0], digests[1]);
  EXPECT_NE(digests[0], digests[2]);
}

TEST(LargeLibrary, HasTheShapeOfARealOne) {
  QTemporaryDir home;
  const DemoSummary summary = makeLargeLibrary(home.path(), 5000, 3);
  ASSERT_EQ(summary.error, QString());
  EXPECT_EQ(filesBelow(home.path()), QStringList{summary.libraryFile});
  const Dictionary library = parsed(summary.libraryFile);
  const Dictionary tracks = library.value(keys::Tracks).toDictionary();
  ASSERT_EQ(tracks.size(), 5000);
  QSet<QString> artists, identities;
  int marked = 0;
  qint64 valueCount = 0;
  for (const DictionaryEntry &entry : tracks) {
    const Dictionary track = entry.value.toDictionary();
    artists += track.value(keys::Artist).toText();
    identities += track.value(keys::PersistentID).toText();
    const QString &name = track.value(keys::Name).toText();
    marked += std::any_of(name.begin(), name.end(), [](QChar c) { return c.unicode() > 126; }) ? 1 : 0;
    valueCount += track.size();
  }
  EXPECT_EQ(identities.size(), 5000);
  EXPECT_NEAR(double(artists.size()), 5000.0 / 40, 20);
  EXPECT_NEAR(marked, 5000 * 0.05, 75);
  EXPECT_NEAR(double(valueCount) / 5000, 28, 2);
  EXPECT_NEAR(summary.duplicateRows, 5000 * 0.03, 50);
  EXPECT_NEAR(double(QFileInfo(summary.libraryFile).size()) / 5000, 1550, 150);
}

TEST(LargeLibrary, AFolderThatCannotBeWrittenIsTold) {
  QTemporaryDir home;
  QFile blocker(home.filePath(QStringLiteral("Music")));
  ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
  EXPECT_TRUE(makeLargeLibrary(home.path(), 10, 1).error.contains(home.path()));
  EXPECT_TRUE(makeDemoLibrary(home.path(), 1).error.contains(home.path()));
}
