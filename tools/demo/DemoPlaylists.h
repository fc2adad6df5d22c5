#pragma once

#include "tools/demo/DemoPlan.h"

/// Writes the playlists of the demo library: the whole library, the kinds that iTunes keeps itself, a folder
/// with two lists in it, ordinary lists (one holds a song twice and all copies of another) and two smart
/// ones. Answers how many.
int writeDemoPlaylists(LibraryXml &xml, const DemoPlan &plan);

/// Writes the one playlist that holds entries 1 to `count`, as numbered from `firstID` on.
void writeMasterPlaylist(LibraryXml &xml, int firstID, int count);
