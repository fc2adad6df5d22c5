#include "tests/program/MergedHome.h"

#include <signal.h>
#include <unistd.h>

#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include "keeper/library/EntryTable.h"
#include "keeper/library/LibraryStore.h"
#include "keeper/library/PlaylistTable.h"
#include "keeper/library/TrackTable.h"
#include "platform/FileAddress.h"
#include "platform/keeper/KeeperLock.h"
#include "tools/demo/Mp3Writer.h"
#include "values/Keys.h"

namespace {

constexpr int kMostCopies = 4, kPlaylists = 5, kLongest = 230;

/// The numbers of a song and of its copy in one; never 0.
int numberOf(int song, int copy) {
  return (song + 1) * kMostCopies + copy;
}

int songOf(quint64 number) {
  return int(number / kMostCopies) - 1;
}

QByteArray textOf(int number) {
  return QByteArray::number(number, 16).toUpper().rightJustified(16, '0');
}

/// A file whose audio can be told from all others'.
QByteArray songBytes(const QString &name, int number) {
  SongTags tags;
  tags.name = name;
  tags.artist = QStringLiteral("Artist");
  QByteArray bytes = makeMp3(tags, 128, 1250).bytes;
  const QByteArray mark = "<AUDIO" + QByteArray::number(number).rightJustified(8, '0') + '>';
  return bytes.replace(bytes.size() - 200, mark.size(), mark);
}

QByteArray entry(const char *key, const char *type, const QByteArray &value) {
  return QByteArray("<key>") + key + "</key><" + type + '>' + value + "</" + type + ">\n";
}

QByteArray trackXml(int number, const QString &name, const QString &file, int plays, int skips) {
  const QByteArray id = QByteArray::number(number);
  return "<key>" + id + "</key><dict>" + entry("Track ID", "integer", id) +
         entry("Name", "string", name.toUtf8()) + entry("Artist", "string", "Artist") +
         entry("Kind", "string", "MPEG audio file") + entry("Total Time", "integer", "1250") +
         entry("Play Count", "integer", QByteArray::number(plays)) +
         entry("Skip Count", "integer", QByteArray::number(skips)) +
         entry("Persistent ID", "string", textOf(number)) + entry("Track Type", "string", "File") +
         entry("Location", "string", fileAddressOfPath(file).toUtf8()) + "</dict>\n";
}

/// Playlists "List 0", "List 1" and so on of tracks by their IDs.
QByteArray playlistsXml(const std::vector<QByteArrayList> &lists) {
  QByteArray xml;
  for (size_t i = 0; i < lists.size(); ++i) {
    const QByteArray number = QByteArray::number(int(i));
    xml += "<dict>" + entry("Name", "string", "List " + number) +
           entry("Playlist Persistent ID", "string", "00000000FFFF000" + number) +
           "<key>Playlist Items</key><array>";
    for (const QByteArray &id : lists[i]) xml += "<dict>" + entry("Track ID", "integer", id) + "</dict>";
    xml += "</array></dict>\n";
  }
  return xml;
}

}  // namespace

MergedHome::~MergedHome() {
  if (program.state() != QProcess::NotRunning) killMerge();
  // One that goes with its parent may have started another by then.
  EXPECT_TRUE(eventually([this] {
    const std::vector<pid_t> left = processesOf("");
    for (const pid_t id : left) ::kill(id, SIGKILL);
    return left.empty();
  }));
}

void MergedHome::makeHome(int songs, std::mt19937 &random) {
  killKeeper();
  QDir(path(QStringLiteral("home"))).removeRecursively();
  QDir(unkeptFolder()).removeRecursively();
  QDir().mkpath(unkeptFolder());
  const auto upTo = [&](int most) { return int(random() % unsigned(most + 1)); };
  QByteArray tracks;
  std::vector<QByteArrayList> lists{size_t(kPlaylists)};
  for (int song = 0; song < songs; ++song) {
    const QString name = QStringLiteral("Song %1").arg(song);
    for (int copy = 0, copies = 2 + upTo(kMostCopies - 2); copy < copies; ++copy) {
      const int number = numberOf(song, copy);
      const QString file = musicFolder() + QStringLiteral("/%1 %2.mp3").arg(name).arg(copy);
      writeFile(file, songBytes(name, number));
      const QByteArray id = QByteArray::number(number);
      const int plays = upTo(9), skips = upTo(3);
      tracks += trackXml(number, name, file, plays, skips);
      for (QByteArrayList &list : lists) {
        const bool isLong = &list == &lists.front();
        if (list.size() < (isLong ? kLongest : 25) && upTo(isLong ? 1 : 3) == 0)
          list.insert(upTo(int(list.size())), id);
      }
    }
  }
  writeFile(path(QStringLiteral("home/Documents/iTunes/iTunes Library.xml")),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n" +
                entry("Music Folder", "string",
                      QUrl::fromLocalFile(libraryFolder() + QStringLiteral("/iTunes Media/")).toEncoded()) +
                "<key>Tracks</key>\n<dict>\n" + tracks + "</dict>\n<key>Playlists</key><array>" +
                playlistsXml(lists) + "</array>\n</dict>\n</plist>\n");
  start();
  ASSERT_TRUE(eventually([&] {
    const std::optional<keeperProtocol::Status> now = status();
    return now && now->tracks > songs && !now->importing;
  }));
  before = holdings();
  ASSERT_EQ(before.playable.size(), songs);
  ASSERT_EQ(before.audio.size(), before.tracks);
  ASSERT_EQ(before.tracksWithFile, before.tracks);
}

void MergedHome::ensureKeeper() {
  // One that a merge has started serves as well, and may come at the same time.
  if (!KeeperLock::holder(place.lock())) {
    if (process.state() != QProcess::NotRunning) (void)waitForEnd();
    process.start(QStringLiteral(TALLYFEN_KEEPER), QStringList());
    ASSERT_TRUE(process.waitForStarted());
  }
  ASSERT_TRUE(eventually([this] { return status().has_value(); }));
}

void MergedHome::killKeeper() {
  const std::optional<qint64> holder = KeeperLock::holder(place.lock());
  if (process.state() != QProcess::NotRunning) killNow();
  if (!holder || *holder <= 0) return;
  ::kill(pid_t(*holder), SIGKILL);
  EXPECT_TRUE(eventually([this] { return !KeeperLock::holder(place.lock()); }));
}

QByteArray MergedHome::journal() const {
  QDirIterator files(path(QStringLiteral("home")), {QStringLiteral("Merge Journal")}, QDir::Files,
                     QDirIterator::Subdirectories);
  // A new journal is blank.
  return files.hasNext() ? readFile(files.next()).trimmed() : QByteArray();
}

std::vector<pid_t> MergedHome::processesOf(const char *executable) const {
  const QByteArray home = '\0' + QByteArray("HOME=") + QFile::encodeName(path(QStringLiteral("home"))) + '\0';
  const QString wanted = QString::fromUtf8(executable);
  std::vector<pid_t> found;
  for (const QString &name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
    const QString folder = QStringLiteral("/proc/") + name;
    const pid_t id = name.toInt();
    if (id <= 0 || id == ::getpid() || !('\0' + readFile(folder + QStringLiteral("/environ"))).contains(home))
      continue;
    if (wanted.isEmpty() || QFile::symLinkTarget(folder + QStringLiteral("/exe")) == wanted)
      found.push_back(id);
  }
  return found;
}

void MergedHome::begin(const QString &executable, const QStringList &arguments) {
  journalAtStart = journal();
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("TMPDIR"), path(QStringLiteral("home")));
  program.setProcessEnvironment(environment);
  program.setProcessChannelMode(QProcess::MergedChannels);
  program.start(executable, arguments);
  ASSERT_TRUE(program.waitForStarted());
}

void MergedHome::startWindow(int policy, const QStringList &arguments) {
  writeFile(path(QStringLiteral("home/XDG_CONFIG_HOME/tallyfen/com.brinmoor.tallyfen.plist")),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" +
                entry("unkeptActionPolicy", "integer", QByteArray::number(policy)) +
                entry("unkeptPath", "string", unkeptFolder().toUtf8()) + "</dict></plist>");
  begin(QStringLiteral(MERGING_APPLICATION), arguments);
}

QStringList MergedHome::windowTold() const {
  return QString::fromUtf8(readFile(path(QStringLiteral("home/Merging.txt"))))
      .split(u'\n', Qt::SkipEmptyParts);
}

void MergedHome::startMerge(int policy) {
  QStringList arguments{QStringLiteral("merge"), QStringLiteral("--yes"), QStringLiteral("--json"),
                        QStringLiteral("--policy"),
                        policy ? QStringLiteral("folder") : QStringLiteral("trash")};
  if (policy) arguments << QStringLiteral("--folder") << unkeptFolder();
  begin(QStringLiteral(TALLYFENCTL), arguments);
}

void MergedHome::waitForFirstSteps() {
  EXPECT_TRUE(
      eventually([this] { return program.state() == QProcess::NotRunning || journal() != journalAtStart; }));
}

int MergedHome::waitForMerge() {
  constexpr int kLongestMerge = 180000;
  const bool hasEnded = program.state() == QProcess::NotRunning || program.waitForFinished(kLongestMerge);
  told = program.readAll();
  EXPECT_TRUE(hasEnded) << told.toStdString() << windowTold().join(u'\n').toStdString();
  if (!hasEnded) killMerge();
  return program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
}

void MergedHome::killMerge() {
  program.kill();
  EXPECT_TRUE(program.waitForFinished());
  told = program.readAll();
}

void MergedHome::mergeToTheEnd(int policy) {
  constexpr int kMostRuns = 4;
  for (int run = 0; run < kMostRuns; ++run) {
    startMerge(policy);
    EXPECT_EQ(waitForMerge(), 0) << told.toStdString();
    const QJsonObject root = QJsonDocument::fromJson(told).object();
    const QJsonObject plan = root.value(u"plan").toObject();
    ASSERT_TRUE(plan.contains(u"groups")) << told.toStdString();
    if (plan.value(u"groups").toArray().isEmpty()) return;
  }
  ADD_FAILURE() << "there is always something left to be merged";
}

void MergedHome::collectAudio(const QString &folder, QSet<int> *audio) const {
  QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QByteArray bytes = readFile(files.next());
    const qsizetype mark = bytes.indexOf("<AUDIO");
    if (mark >= 0 && bytes.size() > mark + 14) audio->insert(bytes.mid(mark + 6, 8).toInt());
  }
}

MergedHome::Holdings MergedHome::holdings() {
  Holdings held;
  LibraryStore store;
  EXPECT_EQ(store.open(libraryFolder(), LibraryStore::Access::ReadOnly), QString());
  EXPECT_EQ(store.integrityReport(), QString());
  TrackTable &tracks = store.tracks();
  for (const TrackRow row : TrackRows(tracks.rows())) {
    ++held.tracks;
    held.plays += tracks.value(row, keys::PlayCount).toInteger();
    held.skips += tracks.value(row, keys::SkipCount).toInteger();
    const QString file = pathOfFileAddress(tracks.value(row, keys::Location).toText());
    if (!QFileInfo(file).isFile()) continue;
    ++held.tracksWithFile;
    held.playable.insert(songOf(tracks.persistentID(row)));
  }
  for (const PlaylistInfo &list : std::vector<PlaylistInfo>(store.playlists().all())) {
    QList<int> &songs = held.playlists[list.name];
    for (const TrackRow row : store.entries().tracks(list.row)) songs += songOf(tracks.persistentID(row));
  }
  for (const QString &folder :
       {musicFolder(), path(QStringLiteral("home/XDG_DATA_HOME/Trash")), unkeptFolder()})
    collectAudio(folder, &held.audio);
  return held;
}

void MergedHome::expectSongsStand() {
  const Holdings now = holdings();
  EXPECT_TRUE(now.audio.contains(before.audio)) << (before.audio - now.audio).size() << " audio lost";
  EXPECT_TRUE(now.playable.contains(before.playable)) << "a song has no track with a file any more";
}

void MergedHome::expectNothingLost() {
  expectSongsStand();
  const Holdings now = holdings();
  EXPECT_EQ(now.tracksWithFile, before.playable.size()) << "copies are left that no merge finds";
  EXPECT_EQ(now.plays, before.plays);
  EXPECT_EQ(now.skips, before.skips);
  for (const QString &name : before.playlists.keys()) {
    if (name.startsWith(QStringLiteral("List "))) {
      EXPECT_EQ(now.playlists.value(name), before.playlists.value(name)) << name.toStdString();
    }
  }
  for (const QString &name : now.playlists.keys())
    EXPECT_FALSE(name.startsWith(QStringLiteral("ZZZ_TF"))) << "a temporary playlist is left";
}
