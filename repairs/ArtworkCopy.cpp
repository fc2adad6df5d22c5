#include "repairs/ArtworkCopy.h"

#include "audio/SongFile.h"
#include "support/BMLog.h"

bool copyArtworkFromSongAtPathToSongAtPathReplace(const QString &fromPath, const QString &toPath,
                                                  bool replace) {
  const SongFilePtr source = SongFile::songWithPath(fromPath), target = SongFile::songWithPath(toPath);
  AudioInfoTag *const from = source ? source->infotag() : nullptr;
  AudioInfoTag *const to = target ? target->infotag() : nullptr;
  if (!from || !to) return false;
  if (replace) to->removeAllImages();
  for (const ID3ImagePtr &image : from->images()) to->addImage(image);
  QString error;
  if (target->writeToOriginalPathWithErrorRefreshiTunes(&error, true)) return true;
  BMLog("copyArtwork... couldn't write because:\n %@\n %@", toPath, error);
  return false;
}
