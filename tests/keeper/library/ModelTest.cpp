#include "keeper/library/MusicDictionary.h"
#include "tests/keeper/library/ModelFixture.h"
#include "values/Keys.h"

namespace {

/// Three tracks, of which two are in the playlist "Mix" (the first twice), a folder and a smart playlist.
class Model : public ModelFixture {
 protected:
  Model() {
    const Dictionary first = Dictionary::make();
    first.set(keys::Name, u"Alpha"_qs);
    first.set(keys::Artist, u"Ann"_qs);
    first.set(keys::TotalTime, 185500);
    first.set(keys::PlayCount, 3);
    first.set(keys::PlayDateUTC, Date{1000});
    first.set(keys::Rating, 60);
    first.set(keys::RatingComputed, true);
    first.set(keys::Disabled, true);
    first.set(keys::Size, qint64(3'000'000'000));
    first.set(keys::VolumeAdjustment, 128);
    first.set(keys::TrackType, u"File"_qs);
    a = keeper.addTrack(first);
    b = keeper.addTrack(u"Beta"_qs, u"Bob"_qs, u"Blue Sky"_qs, folder(u"gone.mp3"_qs));
    c = keeper.addTrack(u"beta"_qs, u"Cy"_qs);
    mix = keeper.addPlaylist(u"Mix"_qs, {a, b, a});
    keeper.addFolder(u"Drawer"_qs);
    keeper.addSmartPlaylist(u"Clever"_qs, {b});
  }

  QString a, b, c, mix;
};

}  // namespace

TEST_F(Model, TracksTellTheirKeys) {
  expectAll({
      {u"return name of track 1"_qs, u"Alpha"_qs},
      {u"return album of track 1"_qs, u""_qs},
      {u"return duration of track 1"_qs, u"185.5"_qs},
      {u"return finish of track 1"_qs, u"185.5"_qs},
      {u"return time of track 1"_qs, u"3:05"_qs},
      {u"return (size of track 1) div 1000000"_qs, u"3000"_qs},
      {u"return played count of track 1"_qs, u"3"_qs},
      {u"return (played date of track 2) is missing value"_qs, u"true"_qs},
      {u"return (played date of track 1) is missing value"_qs, u"false"_qs},
      {u"return rating of track 1"_qs, u"60"_qs},
      {u"return rating kind of track 1 as text"_qs, u"computed"_qs},
      {u"return rating kind of track 2 as text"_qs, u"user"_qs},
      {u"return enabled of track 1"_qs, u"false"_qs},
      {u"return enabled of track 2"_qs, u"true"_qs},
      {u"return volume adjustment of track 1"_qs, u"50"_qs},
      {u"return media kind of track 1 as text"_qs, u"song"_qs},
      {u"return (location of track 2) is missing value"_qs, u"true"_qs},
      {u"return class of track 1 as text"_qs, u"file track"_qs},
      {u"return index of track 2 of playlist \"Mix\""_qs, u"2"_qs},
      {u"return name of container of track 1 of playlist \"Mix\""_qs, u"Mix"_qs},
      {u"return album artist of (get properties of track 1)"_qs, u""_qs},
      {u"return (cloud status of track 1 as text) & purchaser name of track 1"_qs, u"unknown"_qs},
      {u"return address of track 1"_qs, u"error -1728"_qs},
      {u"return name of track 4"_qs, u"error -1728"_qs},
  });
  EXPECT_EQ(keeper.tell(u"return persistent ID of track 3"_qs), c);
}

TEST_F(Model, ChangesBecomeTheKeysOfAnImportAndVoidOnesRemoveThem) {
  struct Change {
    QString script;
    Key key;
    Value value;
  };
  const std::vector<Change> changes = {
      {u"artist of track 1 to \"Ann B\""_qs, keys::Artist, u"Ann B"_qs},
      {u"artist of track 1 to \"\""_qs, keys::Artist, Value()},
      {u"comment of track 1 to 12"_qs, keys::Comments, u"12"_qs},
      {u"year of track 1 to 1999"_qs, keys::Year, 1999},
      {u"year of track 1 to 0"_qs, keys::Year, Value()},
      {u"enabled of track 1 to true"_qs, keys::Disabled, Value()},
      {u"compilation of track 1 to true"_qs, keys::Compilation, true},
      {u"rating of track 1 to 80"_qs, keys::Rating, 80},
      {u"loved of track 1 to true"_qs, keys::Loved, true},
      {u"properties of track 1 to {comment:\"both\", bpm:99}"_qs, keys::Comments, u"both"_qs},
      {u"properties of track 1 to {year:0, bpm:98}"_qs, keys::BPM, 98},
      {u"volume adjustment of track 1 to -100"_qs, keys::VolumeAdjustment, -255},
      {u"start of track 1 to 1.5"_qs, keys::StartTime, 1500},
      {u"finish of track 1 to 500"_qs, keys::StopTime, Value()},
      {u"media kind of track 1 to movie"_qs, keys::Movie, true},
      {u"played count of track 1 to (played count of track 1) + 4"_qs, keys::PlayCount, 7},
  };
  for (const auto &[script, key, value] : changes) {
    EXPECT_FALSE(keeper.tell(u"set "_qs + script).startsWith(u"error")) << script.toStdString();
    EXPECT_TRUE(isEqual(keeper.trackValue(a, key), value)) << script.toStdString();
  }
  EXPECT_FALSE(keeper.tell(u"set played date of track 2 to played date of track 1"_qs).startsWith(u"error"));
  EXPECT_TRUE(keeper.trackValue(a, keys::RatingComputed).isNull());
  ASSERT_NE(keeper.trackValue(b, keys::PlayDateUTC).toDate(), nullptr);
  EXPECT_EQ(keeper.trackValue(b, keys::PlayDateUTC).toDate()->seconds, 1000);
  EXPECT_EQ(keeper.trackValue(b, keys::PlayDate).type(), Value::Type::Integer);
}

TEST_F(Model, WhatCannotBeSetSaysWhy) {
  expectAll({
      {u"set duration of track 1 to 3"_qs, u"error -10003"_qs},
      {u"set persistent ID of track 1 to \"0000000000000001\""_qs, u"error -10003"_qs},
      {u"set date added of track 1 to (current date)"_qs, u"error -10003"_qs},
      {u"set index of track 1 to 2"_qs, u"error -10003"_qs},
      {u"set year of track 1 to \"last\""_qs, u"error -10006"_qs},
      {u"set rating of track 1 to 101"_qs, u"error -10006"_qs},
      {u"set enabled of track 1 to \"perhaps\""_qs, u"error -10006"_qs},
      {u"set played date of track 1 to \"now\""_qs, u"error -10006"_qs},
      {u"set played date of track 1 to missing value"_qs, u"error -10006"_qs},
      {u"set artist of track 1 to {1}"_qs, u"error -10006"_qs},
      {u"set properties of track 1 to {name:\"Half\", year:\"last\"}"_qs, u"error -10006"_qs},
      {u"set properties of playlist \"Mix\" to {name:\"Half\", smart:true}"_qs, u"error -10003"_qs},
      {u"set properties of track 1 to 3"_qs, u"error -10006"_qs},
      {u"make new user playlist at playlist \"Mix\""_qs, u"error -10010"_qs},
      {u"set location of track 1 to (POSIX file \"/gone/x.mp3\")"_qs, u"error -43"_qs},
      {u"set lyrics of track 2 to \"la\""_qs, u"error -43"_qs},
      {u"set smart of playlist \"Mix\" to true"_qs, u"error -10003"_qs},
      {u"set name of library playlist 1 to \"Mine\""_qs, u"error -10003"_qs},
      {u"set version to \"2\""_qs, u"error -10003"_qs},
      {u"delete library playlist 1"_qs, u"error -10003"_qs},
      {u"delete track 1 of playlist \"Clever\""_qs, u"error -10003"_qs},
      {u"duplicate track 1 to playlist \"Clever\""_qs, u"error -10003"_qs},
      {u"duplicate track 1 to playlist \"Drawer\""_qs, u"error -10003"_qs},
      {u"duplicate track 1 to library playlist 1"_qs, u"error -10006"_qs},
      {u"move playlist \"Mix\" to playlist \"Clever\""_qs, u"error -10010"_qs},
      {u"move playlist \"Drawer\" to playlist \"Drawer\""_qs, u"error -10006"_qs},
      {u"move track 1 to playlist \"Drawer\""_qs, u"error -1708"_qs},
      {u"make new track"_qs, u"error -10010"_qs},
      {u"make new user playlist with properties {name:\"X\", smart:true}"_qs, u"error -10003"_qs},
      {u"search playlist \"Mix\" for \" \""_qs, u"error -50"_qs},
      {u"refresh track 2"_qs, u"error -43"_qs},
      {u"add (POSIX file \"/gone/x.mp3\")"_qs, u"error -43"_qs},
      {u"convert track 1"_qs, u"error -1708"_qs},
      {u"print track 1"_qs, u"error -1708"_qs},
      {u"get current track"_qs, u"error -1728"_qs},
      {u"get parent of playlist \"Mix\""_qs, u"error -1728"_qs},
  });
  EXPECT_EQ(keeper.playlistNames(), (QStringList{u"Mix"_qs, u"Drawer"_qs, u"Clever"_qs}));
  EXPECT_EQ(keeper.namesIn(), (QStringList{u"Alpha"_qs, u"Beta"_qs, u"beta"_qs}));
}

TEST_F(Model, PlaylistsAreFoundByClassNameIdentityAndKind) {
  expectAll({
      {u"return name of every user playlist as text"_qs, u"MixDrawerClever"_qs},
      {u"return count of playlists"_qs, u"4"_qs},
      {u"return name of folder playlist 1"_qs, u"Drawer"_qs},
      {u"return (name of every user playlist whose (smart is false) and (special kind is none)) as text"_qs,
       u"Mix"_qs},
      {u"return name of first user playlist whose smart is true"_qs, u"Clever"_qs},
      {u"return count of (every user playlist whose name is \"MIX\")"_qs, u"1"_qs},
      {u"return name of (first user playlist whose persistent ID is \"%1\")"_qs.arg(mix), u"Mix"_qs},
      {u"return exists (some playlist whose persistent ID is \"0000000000000000\")"_qs, u"false"_qs},
      {u"return special kind of playlist \"Drawer\" as text"_qs, u"folder"_qs},
      {u"return special kind of library playlist 1 as text"_qs, u"library"_qs},
      {u"return class of playlist \"Drawer\" as text"_qs, u"folder playlist"_qs},
      {u"return duration of playlist \"Mix\""_qs, u"371"_qs},
      {u"return time of playlist \"Mix\""_qs, u"6:11"_qs},
      {u"return count of playlists of source 1"_qs, u"4"_qs},
      {u"return kind of source 1 as text"_qs, u"library"_qs},
      {u"return name of (get properties of source 1)"_qs, u"Library"_qs},
      {u"return count of every subscription playlist"_qs, u"0"_qs},
  });
}

TEST_F(Model, TracksAreFoundWithoutAndWithAPlaylist) {
  expectAll({
      {u"return (name of every track of library playlist 1 whose name is \"BETA\") as text"_qs,
       u"Betabeta"_qs},
      {u"return count of (every track of playlist \"Mix\" whose persistent ID is \"%1\")"_qs.arg(a), u"2"_qs},
      {u"return index of last track of playlist \"Mix\" whose persistent ID is \"%1\""_qs.arg(a), u"3"_qs},
      {u"return exists (some track of playlist \"Mix\" whose persistent ID is \"%1\")"_qs.arg(c),
       u"false"_qs},
      {u"return artist of (first track whose name is \"beta\" and artist is \"Cy\")"_qs, u"Cy"_qs},
      {u"return name of (first track whose enabled is false)"_qs, u"Alpha"_qs},
      {u"return (name of every track of playlist \"Mix\" whose enabled is true) as text"_qs, u"Beta"_qs},
      {u"return name of (track id (database ID of track 2))"_qs, u"Beta"_qs},
      {u"return artist of every track of playlist \"Mix\" as text"_qs, u"AnnBobAnn"_qs},
      {u"return count of url tracks"_qs, u"0"_qs},
      {u"return count of file tracks of playlist \"Mix\""_qs, u"3"_qs},
      {u"return name of item 1 of (search library playlist 1 for \"bob sk\")"_qs, u"Beta"_qs},
      {u"return count of (search playlist \"Mix\" for \"ann\" only artists)"_qs, u"2"_qs},
  });
}

TEST_F(Model, AnEntryGoesWithoutItsTrackAndATrackGoesFromEverywhere) {
  keeper.tell(u"delete track 3 of playlist \"Mix\""_qs);
  EXPECT_EQ(keeper.namesIn(mix), (QStringList{u"Alpha"_qs, u"Beta"_qs}));
  EXPECT_EQ(keeper.namesIn().size(), 3);
  EXPECT_EQ(
      keeper.tell(u"set t to track 1 of playlist \"Mix\"\ndelete (every track of library playlist 1 whose "
                  u"name is \"Alpha\")\nreturn exists t"_qs),
      u"false"_qs);
  EXPECT_EQ(keeper.namesIn(mix), QStringList{u"Beta"_qs});
  EXPECT_EQ(
      keeper.tell(u"delete every track of playlist \"Mix\"\nreturn count of tracks of playlist \"Mix\""_qs),
      u"0"_qs);
  EXPECT_EQ(keeper.namesIn().size(), 2);
}

TEST_F(Model, PlaylistsAreMadeFilledMovedAndDeleted) {
  expectAll({
      {u"set p to make new user playlist with properties {name:\"New\", description:\"d\"}\n"
       u"duplicate (every track of playlist \"Mix\") to p\nreturn (count of tracks of p) & (description of p) as text"_qs,
       u"3d"_qs},
      {u"return index of (duplicate track 3 to playlist \"New\")"_qs, u"4"_qs},
      {u"move playlist \"New\" to folder playlist \"Drawer\"\nreturn name of parent of playlist \"New\""_qs,
       u"Drawer"_qs},
      {u"return name of parent of (make new user playlist at folder playlist \"Drawer\")"_qs, u"Drawer"_qs},
      {u"set name of playlist \"New\" to \"Newer\"\nreturn exists playlist \"Newer\""_qs, u"true"_qs},
      {u"delete (every user playlist whose name is \"Drawer\")\nreturn exists playlist \"Newer\""_qs,
       u"false"_qs},
  });
  EXPECT_EQ(keeper.playlistNames(), (QStringList{u"Mix"_qs, u"Clever"_qs}));
}

TEST_F(Model, ACommandThatFailsHalfWayChangesNothing) {
  EXPECT_EQ(keeper.tell(u"delete {track 1 of library playlist 1, track 1 of playlist \"Clever\"}"_qs),
            u"error -10003"_qs);
  EXPECT_EQ(keeper.namesIn().size(), 3);
  EXPECT_EQ(keeper.tell(u"make new user playlist with properties {name:\"Half\", duration:3}"_qs),
            u"error -10003"_qs);
  EXPECT_FALSE(keeper.playlistNames().contains(u"Half"_qs));
  EXPECT_EQ(keeper.tell(u"move {playlist \"Mix\", library playlist 1} to folder playlist \"Drawer\""_qs),
            u"error -10003"_qs);
  EXPECT_EQ(keeper.tell(u"get parent of playlist \"Mix\""_qs), u"error -1728"_qs);
}

TEST_F(Model, TheApplicationTellsOfItselfAndSavesAndQuits) {
  services.bundle.shortVersion = u"1.2"_qs;
  setPlatform(services);
  keeper.exportProblem = u"disk full"_qs;
  expectAll({{u"return version as string"_qs, u"1.2"_qs},
             {u"return name"_qs, u"Music Keeper"_qs},
             {u"return count of (get selection)"_qs, u"0"_qs},
             {u"set fixed indexing to true\nreturn fixed indexing"_qs, u"true"_qs},
             {u"save source"_qs, u"error -10000"_qs},
             {u"reveal track 1\nactivate\nreturn \"shown\""_qs, u"shown"_qs},
             {u"quit"_qs, u"no result"_qs}});
  EXPECT_EQ(keeper.exports, 1);
  EXPECT_EQ(keeper.quits, 1);
}

TEST(MusicDictionary, FoldersAreUserPlaylistsAndTheLibraryIsNot) {
  EXPECT_TRUE(musicDictionary().isKindOf(u"folder playlist"_qs, u"user playlist"_qs));
  EXPECT_FALSE(musicDictionary().isKindOf(u"library playlist"_qs, u"user playlist"_qs));
  EXPECT_EQ(musicDictionary().longestTerm({u"loved"_qs, u"of"_qs}).meaning, u"favorited"_qs);
}
