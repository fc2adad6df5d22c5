#pragma once

#include "tools/demo/DemoPlan.h"
#include "tools/demo/Random.h"

/// Builds the demo library's plan step by step. Base songs are told apart by their place in the row of all
/// songs modulo 7: each step changes or copies songs of its own remainder, so the steps never meet in one
/// song.
class PlanBuilder {
 public:
  explicit PlanBuilder(quint64 seed) : random(seed) {}

  /// The artists' albums, each song once.
  void addAlbums();
  /// 40 groups: other bit rate, other kind of file, other spelling, three copies, the same once more.
  void addDuplicates();
  /// Remixes, live versions of another length, songs of the same title by others, copies whose file is gone.
  void addLookalikes();
  /// Songs under misspelled artists and albums.
  void addMisspellings();
  /// Songs whose artist or album stands elsewhere in another spelling.
  void addNameVariants();
  /// Entries whose file is gone, some of them moved to where no entry finds it.
  void addMissing();
  /// Files that no entry names.
  void addOrphans();
  /// Entries that are no songs: a film, an episode that was not downloaded, a booklet, a ringtone.
  void addNonSongs();
  /// Numbers, dates and counts for all entries; the plan is done.
  DemoPlan finish();

 private:
  DemoTrack makeSong(int songIndex);
  DemoTrack copyOf(const DemoTrack &song, const QString &suffix, bool m4a);
  void addCopy(const DemoTrack &copy);
  void addOrphan(const DemoTrack &song);
  void addNonSong(const QString &name, const QString &kind, const QString &path);
  void addHistory(DemoTrack &track);

  Random random;
  DemoPlan plan;
};

/// The path of a song's file below the media folder's "Music": artist, album, number and name. Characters
/// that end a folder's name become "_".
QString songPath(const SongTags &tags, const QString &suffix, bool m4a);
