#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>

#include "platform/qt/FreedesktopTrash.h"
#include "platform/qt/WholeCopy.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

constexpr uid_t kNobody = 65534;

/// For a while the process is not the superuser, whom no permission stops.
class AsOrdinaryUser {
 public:
  AsOrdinaryUser() : changed(::geteuid() == 0 && ::seteuid(kNobody) == 0) {}
  ~AsOrdinaryUser() {
    if (changed && ::seteuid(0) != 0) std::abort();
  }

 private:
  const bool changed;
};

class Trash : public TestPlatform {
 protected:
  /// A folder on a file system that is not the test folder's, or empty where the machine has none.
  QString otherDisk() {
    struct stat here = {}, there = {};
    const bool isOther = ::stat(QFile::encodeName(folder()).constData(), &here) == 0 &&
                         ::stat("/dev/shm", &there) == 0 && here.st_dev != there.st_dev;
    if (!isOther) return {};
    if (!other) other = std::make_unique<QTemporaryDir>(QStringLiteral("/dev/shm/trash-test-"));
    return other->isValid() ? other->path() : QString();
  }
  bool put(const QString &path, FreedesktopTrash::FindTop top = FreedesktopTrash::topOfFileSystem) {
    error.clear();
    return FreedesktopTrash(trash, std::move(top)).put(path, &error);
  }
  /// As if the other disk were mounted at that folder.
  bool putBelow(const QString &top, const QString &path) {
    return put(path, [&top](const QByteArray &) { return QFile::encodeName(top); });
  }
  static QStringList namesIn(const QString &folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                                  QDir::Name);
  }
  static bool stands(const QString &path) { return QFileInfo(path).exists() || QFileInfo(path).isSymLink(); }
  QString thrown(const QString &name) const { return trash + QStringLiteral("/files/") + name; }
  /// The line of the information file that says whence a thing came.
  static QByteArray origin(const QString &trashFolder, const QString &name) {
    const QList<QByteArray> lines =
        readFile(trashFolder + QStringLiteral("/info/") + name + QStringLiteral(".trashinfo")).split('\n');
    return lines.size() == 4 && lines[0] == "[Trash Info]" && lines[2].startsWith("DeletionDate=20")
               ? lines[1]
               : QByteArray();
  }
  void expectNothingThrown() {
    EXPECT_EQ(namesIn(trash + QStringLiteral("/files")), QStringList());
    EXPECT_EQ(namesIn(trash + QStringLiteral("/info")), QStringList());
  }

  const QString trash = folder(QStringLiteral("home/data/Trash"));
  QString error;
  std::unique_ptr<QTemporaryDir> other;
};

TEST_F(Trash, TakesFilesFoldersAndLinksThemselves) {
  const QString song = writeFile(QStringLiteral("music/a b/50% Ü.mp3"), "audio");
  const QString empty = writeFile(QStringLiteral("music/empty"), "");
  writeFile(QStringLiteral("music/album/disc/1.mp3"), "one");
  const QString link = folder(QStringLiteral("music/link")), loose = folder(QStringLiteral("music/loose"));
  ASSERT_TRUE(QFile::link(empty, link) && QFile::link(QStringLiteral("/nowhere"), loose));
  for (const QString &path : {song, link, loose, empty, folder(QStringLiteral("music/album/"))}) {
    EXPECT_TRUE(put(path)) << error.toStdString();
    EXPECT_FALSE(stands(path)) << path.toStdString();
  }
  EXPECT_EQ(readFile(thrown(QStringLiteral("50% Ü.mp3"))), "audio");
  EXPECT_EQ(origin(trash, QStringLiteral("50% Ü.mp3")),
            "Path=" + QFile::encodeName(folder()) + "/music/a%20b/50%25%20%C3%9C.mp3");
  EXPECT_EQ(readFile(thrown(QStringLiteral("album/disc/1.mp3"))), "one");
  EXPECT_TRUE(QFileInfo(thrown(QStringLiteral("link"))).isSymLink());
  EXPECT_TRUE(QFileInfo(thrown(QStringLiteral("loose"))).isSymLink());
  EXPECT_EQ(namesIn(trash + QStringLiteral("/files")).size(), 5);
  EXPECT_EQ(namesIn(trash + QStringLiteral("/info")).size(), 5);
  EXPECT_EQ(QFileInfo(trash).permissions() & 0x7077, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(Trash, NothingInItIsEverReplaced) {
  writeFile(thrown(QStringLiteral("Song.mp3")), "of another program");
  const QString longest = QString(84, u'長') + QStringLiteral(".m");
  for (int i = 0; i < 60; ++i) {
    ASSERT_TRUE(put(writeFile(QStringLiteral("music/Song.mp3"), QByteArray::number(i))))
        << error.toStdString();
    EXPECT_TRUE(i >= 3 || put(writeFile(QStringLiteral("music/") + longest, "x")));
  }
  EXPECT_EQ(readFile(thrown(QStringLiteral("Song.mp3"))), "of another program");
  EXPECT_EQ(readFile(thrown(QStringLiteral("Song 2.mp3"))), "0");
  EXPECT_EQ(readFile(thrown(QStringLiteral("Song 3.mp3"))), "1");
  EXPECT_EQ(namesIn(trash + QStringLiteral("/files")).size(), 64);
  EXPECT_EQ(namesIn(trash + QStringLiteral("/info")).size(), 63);
}

TEST_F(Trash, WhatCannotBeMovedStaysAndIsExplained) {
  const QString locked = folder(QStringLiteral("music/locked")),
                song = writeFile(locked + QStringLiteral("/a"), "a");
  QFile::setPermissions(folder(), QFile::Permissions(0x7777));
  QFile::setPermissions(locked, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
  const QString unreadable = writeFile(QStringLiteral("tmp/open/b"), "b");
  for (const QString &open : {QFileInfo(unreadable).path(), folder(QStringLiteral("home"))})
    QFile::setPermissions(open, QFile::Permissions(0x7777));
  QFile::setPermissions(unreadable, {});
  {
    const AsOrdinaryUser user;
    EXPECT_FALSE(put(song));
    EXPECT_TRUE(error.startsWith(QStringLiteral("cannot put ") + song)) << error.toStdString();
    EXPECT_TRUE(put(unreadable)) << error.toStdString();
    // A trash that cannot be written comes to an end too.
    QFile::setPermissions(trash + QStringLiteral("/info"), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_FALSE(put(thrown(QStringLiteral("b"))));
  }
  for (const QString &closed : {locked, trash + QStringLiteral("/info")})
    QFile::setPermissions(closed, QFile::Permissions(0x7700));
  EXPECT_EQ(readFile(song), "a");
  for (const QString &path :
       {QString(), QStringLiteral("/"), QStringLiteral("/dev/shm"), folder(QStringLiteral("no/file")),
        folder(QStringLiteral("music/..")), folder(QStringLiteral("home"))}) {
    EXPECT_FALSE(put(path)) << path.toStdString();
    EXPECT_FALSE(error.isEmpty());
  }
  EXPECT_EQ(namesIn(trash + QStringLiteral("/files")), QStringList(QStringLiteral("b")));
}

TEST_F(Trash, AnotherDiskHasItsOwn) {
  ASSERT_FALSE(otherDisk().isEmpty()) << "the test needs /dev/shm as a file system of its own";
  const QByteArray user = QByteArray::number(::geteuid()), own = ".Trash-" + user;
  // What stands in the top folder, and which trash is used then; none means the home trash.
  const struct {
    const char *top;
    mode_t sharedMode;
    QByteArray link, expected;
  } cases[] = {{"bare", 0, "", own},
               {"shared", 01777, "", ".Trash/" + user},
               {"without sticky bit", 0777, "", own},
               {"shared is a link", 0, ".Trash", own},
               {"own is a link", 0, own, ""}};
  for (const auto &[name, sharedMode, link, expected] : cases) {
    const QString top = otherDisk() + u'/' + QString::fromLatin1(name);
    QByteArray topName = QFile::encodeName(top);
    const QByteArray shared = topName + "/.Trash";
    const QString song = writeFile(top + QStringLiteral("/music/ä.mp3"), "audio");
    EXPECT_TRUE(sharedMode == 0 ||
                (::mkdir(shared.constData(), 0700) == 0 && ::chmod(shared.constData(), sharedMode) == 0));
    EXPECT_TRUE(link.isEmpty() || ::symlink(topName.constData(), (topName + '/' + link).constData()) == 0);
    EXPECT_TRUE(putBelow(top, song)) << error.toStdString();
    EXPECT_FALSE(stands(song));
    const QString used = expected.isEmpty() ? trash : top + u'/' + QString::fromLatin1(expected);
    EXPECT_EQ(readFile(used + QStringLiteral("/files/ä.mp3")), "audio") << name;
    const QByteArray base = expected.isEmpty() ? topName.replace(' ', "%20") + '/' : QByteArray();
    EXPECT_EQ(origin(used, QStringLiteral("ä.mp3")), "Path=" + base + "music/%C3%A4.mp3") << name;
  }
  EXPECT_EQ(FreedesktopTrash::topOfFileSystem(QFile::encodeName(otherDisk())), "/dev/shm");
}

/// An album on another disk without a trash of its own, so that only copying helps.
class CopyingTrash : public Trash {
 protected:
  void SetUp() override {
    ASSERT_FALSE(otherDisk().isEmpty()) << "the test needs /dev/shm as a file system of its own";
    QFile::link(otherDisk(), otherDisk() + QStringLiteral("/.Trash-") + QString::number(::geteuid()));
    album = otherDisk() + QStringLiteral("/Album");
    writeAlbum();
  }
  void writeAlbum() {
    for (int disc = 0; disc < 3; ++disc) {
      for (int song = 0; song < 4; ++song) writeFile(pathOf(album, disc, song), bytesOf(disc, song));
    }
    QDir().mkpath(album + QStringLiteral("/empty"));
    QFile::link(QStringLiteral("/nowhere"), album + QStringLiteral("/link"));
  }
  bool putAlbum() { return putBelow(otherDisk(), album); }
  static QString pathOf(const QString &root, int disc, int song) {
    return root + QStringLiteral("/disc %1/%2.mp3").arg(disc).arg(song);
  }
  static QByteArray bytesOf(int disc, int song) { return QByteArray(300'000 * song, char('a' + disc)); }
  static bool isWhole(const QString &root) {
    bool whole = QFileInfo(root + QStringLiteral("/link")).isSymLink() &&
                 QFileInfo(root + QStringLiteral("/empty")).isDir();
    for (int disc = 0; disc < 3; ++disc) {
      for (int song = 0; song < 4; ++song)
        whole = whole && QFileInfo(pathOf(root, disc, song)).exists() &&
                readFile(pathOf(root, disc, song)) == bytesOf(disc, song);
    }
    return whole;
  }

  QString album;
};

TEST_F(CopyingTrash, TheCopyIsWholeAndTheOriginalGone) {
  const QString song = pathOf(album, 1, 2);
  QFile file(song);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  const QDateTime past(QDate(2001, 2, 3), QTime(4, 5));
  ASSERT_TRUE(file.setFileTime(past, QFileDevice::FileModificationTime) &&
              file.setPermissions(QFile::ReadOwner));
  file.close();
  ASSERT_TRUE(putAlbum()) << error.toStdString();
  EXPECT_FALSE(stands(album));
  EXPECT_TRUE(isWhole(thrown(QStringLiteral("Album"))));
  const QFileInfo copy(pathOf(thrown(QStringLiteral("Album")), 1, 2));
  EXPECT_EQ(copy.lastModified(), past);
  EXPECT_EQ(copy.permissions() & 0x7077, QFile::ReadOwner);
  EXPECT_EQ(namesIn(trash + QStringLiteral("/files")), QStringList(QStringLiteral("Album")));
  EXPECT_EQ(origin(trash, QStringLiteral("Album")), "Path=" + QFile::encodeName(album));
}

TEST_F(CopyingTrash, AFullDiskLosesNothing) {
  struct rlimit before = {};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  ::signal(SIGXFSZ, SIG_IGN);
  const struct rlimit small = {700'000, before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  EXPECT_FALSE(putAlbum());
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  EXPECT_FALSE(error.isEmpty());
  EXPECT_TRUE(isWhole(album));
  expectNothingThrown();
}

TEST_F(CopyingTrash, WhatIsNoFileIsNotCopied) {
  ASSERT_EQ(::mkfifo(QFile::encodeName(album + QStringLiteral("/z pipe")).constData(), 0600), 0);
  EXPECT_FALSE(putAlbum());
  EXPECT_TRUE(isWhole(album));
  expectNothingThrown();
}

TEST_F(CopyingTrash, WhatChangesAfterTheCopyIsNotRemoved) {
  // A song that is rewritten, and one that is new.
  for (const QString &changed : {pathOf(album, 2, 0), pathOf(album, 2, 9)}) {
    WholeCopy copy(QFile::encodeName(album), QFile::encodeName(folder(QFileInfo(changed).fileName())));
    ASSERT_TRUE(copy.make());
    writeFile(changed, "new");
    EXPECT_EQ(copy.removeSource(), WholeCopy::Removed::Nothing);
    EXPECT_EQ(readFile(changed), "new");
    EXPECT_EQ(readFile(pathOf(album, 0, 1)), bytesOf(0, 1));
  }
}

bool hasEnded(pid_t child) {
  siginfo_t info = {};
  return ::waitid(P_PID, id_t(child), &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid == child;
}

TEST_F(CopyingTrash, AKillAtAnyInstantLosesNothing) {
  constexpr int kRounds = 16;
  const QString copied = thrown(QStringLiteral("Album"));
  int killed = 0;
  for (int round = 0; round < kRounds; ++round) {
    QDir(album).removeRecursively();
    QDir(trash).removeRecursively();
    writeAlbum();
    const pid_t child = ::fork();
    if (child == 0) ::_exit(putAlbum() ? 0 : 1);
    ASSERT_GT(child, 0);
    // In the first rounds somewhere while it copies, then while it removes what it copied.
    if (round < kRounds / 2) {
      ::usleep(useconds_t(round) * 5000);
    } else {
      while (!stands(copied) && !hasEnded(child)) continue;
      ::usleep(useconds_t(round - kRounds / 2) * 20);
    }
    ::kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    killed += WIFSIGNALED(status) ? 1 : 0;
    // Nothing that looks like the album in the trash is only a part of it.
    const bool isThrown = stands(copied);
    EXPECT_TRUE(isThrown ? isWhole(copied) : isWhole(album)) << round;
  }
  EXPECT_GT(killed, 0);
}

}  // namespace
