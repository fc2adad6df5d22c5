#pragma once

#include <vector>

#include "tools/demo/DemoTrack.h"

/// What is in the demo library, before anything is written: the entries with all but what only the files
/// tell, and the files that have no entry. `duplicateGroups` and the counts behind it are what a scan with
/// the settings that the application comes with must find.
struct DemoPlan {
  std::vector<DemoTrack> tracks;
  std::vector<DemoTrack> orphans;
  int duplicateGroups = 0;
  int duplicateRows = 0;
  int inconsistentArtists = 0;
  int inconsistentAlbums = 0;
  int droppedTracks = 0;
  int missingTracks = 0;
};

/// The same plan for the same seed.
DemoPlan planDemoLibrary(quint64 seed);
