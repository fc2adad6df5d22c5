#include "tests/keeper/library/ModelFixture.h"
#include "values/Keys.h"

namespace {

class Playing : public ModelFixture {
 protected:
  Playing() {
    for (const QString &name : {u"One"_qs, u"Two"_qs, u"Three"_qs}) {
      const Dictionary record = Dictionary::make();
      record.set(keys::Name, name);
      record.set(keys::TotalTime, 10'000);
      ids.append(keeper.addTrack(record));
    }
    keeper.addPlaylist(u"Mix"_qs, {ids[2], ids[0]});
  }
  void pass(double seconds) { time.setNow(Date{time.now().seconds + seconds}); }
  QString now() { return keeper.tell(u"return (player state as text) & (name of current track)"_qs); }

  QStringList ids;
};

}  // namespace

TEST_F(Playing, GoesThroughAPlaylistAndStopsAtItsEnd) {
  keeper.tell(u"play playlist \"Mix\""_qs);
  EXPECT_EQ(now(), u"playingThree"_qs);
  EXPECT_EQ(keeper.tell(u"return name of current playlist"_qs), u"Mix"_qs);
  pass(11);
  EXPECT_EQ(now(), u"playingOne"_qs);
  pass(4);
  EXPECT_EQ(keeper.tell(u"return player position"_qs), u"4"_qs);
  keeper.tell(u"pause"_qs);
  pass(100);
  EXPECT_EQ(now(), u"pausedOne"_qs);
  EXPECT_EQ(keeper.tell(u"playpause\nreturn player position"_qs), u"4"_qs);
  EXPECT_EQ(keeper.tell(u"set player position to 90\nreturn player state as text"_qs), u"stopped"_qs);
}

TEST_F(Playing, StepsAndRepeatsAsTold) {
  expectAll({
      {u"play track 2\nnext track\nreturn name of current track"_qs, u"Three"_qs},
      {u"set song repeat to all\nnext track\nreturn name of current track"_qs, u"One"_qs},
      {u"previous track\nreturn name of current track"_qs, u"One"_qs},
      {u"set sound volume to 250\nset mute to true\nreturn sound volume"_qs, u"100"_qs},
      {u"set song repeat to one\nplay track 3\nreturn name of current track"_qs, u"Three"_qs},
  });
  pass(11);
  EXPECT_EQ(now(), u"playingThree"_qs);
  EXPECT_EQ(keeper.tell(u"delete (current track)\nreturn player state as text"_qs), u"stopped"_qs);
}

TEST_F(Playing, NothingFollowsWhatPlaysOnce) {
  keeper.tell(u"play track 1 with once"_qs);
  pass(11);
  EXPECT_EQ(keeper.tell(u"return player state as text"_qs), u"stopped"_qs);
  keeper.tell(u"play track 1 with once\nnext track"_qs);
  pass(11);
  EXPECT_EQ(now(), u"playingThree"_qs) << "a step ends it";
}

TEST_F(Playing, AFileOutsideTheLibraryPlaysAndDoesNotBecomeATrack) {
  const QString path = makeSong(u"other/x.mp3"_qs, {});
  EXPECT_EQ(keeper.tell(u"play "_qs + file(path) + u"\nreturn player state as text"_qs), u"playing"_qs);
  EXPECT_EQ(keeper.tell(u"get current track"_qs), u"error -1728"_qs);
  EXPECT_EQ(keeper.tell(u"play (POSIX file \"/gone.mp3\")"_qs), u"error -43"_qs);
  EXPECT_EQ(keeper.namesIn().size(), 3);
}
