#include "keeper/server/MusicKeeper.h"

#include <QFile>
#include <thread>

#include "tests/fixtures/LibraryText.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

class MusicKeeperInProcess : public TestPlatform {
 protected:
  /// Two songs of a disk "Old"; their files, by the same tails, lie beside the library's file.
  QString movedLibrary() {
    const QString file = folder(u"moved"_qs) + u"/Library.xml"_qs;
    using libraryText::text;
    QByteArray tracks;
    for (const QByteArray number : {"1", "2"}) {
      writeFile(folder(u"moved"_qs) + u"/Artist/Album/%1.mp3"_qs.arg(QString::fromLatin1(number)), "x");
      tracks += libraryText::track(
          number.toInt(), "N" + number,
          text("Persistent ID", number.rightJustified(16, '0')) + text("Track Type", "File") +
              text("Location", "file:///Volumes/Old/There/Artist/Album/" + number + ".mp3"));
    }
    writeFile(file, libraryText::library(tracks));
    return file;
  }
  static QString textOf(const ScriptOutcome &outcome) {
    return outcome.result ? outcome.result->text : outcome.failure->message;
  }
};

}  // namespace

TEST_F(MusicKeeperInProcess, NobodyTakesALibraryThatIsNotOpenYetForAnEmptyOne) {
  MusicKeeper::Setup setup;
  setup.folder = folder(u"library"_qs);
  MusicKeeper keeper(setup);
  EXPECT_TRUE(keeper.status().importing);
  EXPECT_EQ(keeper.open(), QString());
  EXPECT_FALSE(keeper.status().importing) << "there was no file to take in";
  keeper.close();
}

TEST_F(MusicKeeperInProcess, AMappingIsProposedWithItsCountsAndAppliedOnlyWhenItIsAskedFor) {
  MusicKeeper::Setup setup;
  setup.folder = folder(u"library"_qs);
  setup.import = {movedLibrary(), {}};
  setup.waitsForImport = true;
  MusicKeeper keeper(setup);
  ASSERT_EQ(keeper.open(), QString());
  const QString from = u"/Volumes/Old/There"_qs, to = folder(u"moved"_qs);
  const QString told = textOf(keeper.openingImport());
  EXPECT_TRUE(told.contains(u"2 of 2 files are not where the library names them; 2 of them"_qs))
      << qPrintable(told);
  EXPECT_TRUE(told.contains(u"--map \"%1=%2\""_qs.arg(from, to))) << qPrintable(told);
  const QString path =
      u"tell application \"Music Keeper\" to set place to location of track 1 of library "
      "playlist 1\nreturn POSIX path of place"_qs;
  EXPECT_TRUE(keeper.run(path).failure) << "there is no such file";
  const QString applied = textOf(keeper.importFile({setup.import.file, {{from, to}}}));
  EXPECT_TRUE(applied.contains(u"2 locations mapped"_qs)) << qPrintable(applied);
  EXPECT_EQ(textOf(keeper.run(path)), to + u"/Artist/Album/1.mp3"_qs);
  keeper.close();
}

TEST_F(MusicKeeperInProcess, AChangeIsExportedOnceNothingFollowsItAndALookIsNot) {
  MusicKeeper::Setup setup;
  setup.folder = folder(u"library"_qs);
  setup.exportQuiet = std::chrono::milliseconds(20);
  MusicKeeper keeper(setup);
  ASSERT_EQ(keeper.open(), QString());
  const QString file = setup.folder + u"/iTunes Music Library.xml"_qs;
  const auto comes = [&](int longest) {
    for (int i = 0; i < longest && !QFile::exists(file); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return QFile::exists(file);
  };
  (void)keeper.run(u"tell application \"Music Keeper\" to count playlists"_qs);
  EXPECT_FALSE(comes(20));
  (void)keeper.run(u"tell application \"Music Keeper\" to make new user playlist"_qs);
  EXPECT_TRUE(comes(4000));
  keeper.close();
}
