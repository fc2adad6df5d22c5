#include "repairs/ArtworkCopy.h"

#include <algorithm>

#include "audio/SongFile.h"
#include "support/BMLog.h"

namespace {

bool haveSamePictures(AudioInfoTag &one, AudioInfoTag &two) {
  const auto images = one.images(), others = two.images();
  return std::equal(images.begin(), images.end(), others.begin(), others.end(),
                    [](const ID3ImagePtr &image, const ID3ImagePtr &other) {
                      return image->type() == other->type() && image->description() == other->description() &&
                             image->imageData() == other->imageData();
                    });
}

}  // namespace

bool copyArtworkFromSongAtPathToSongAtPathReplace(const QString &fromPath, const QString &toPath,
                                                  bool replace) {
  const SongFilePtr source = SongFile::songWithPath(fromPath), target = SongFile::songWithPath(toPath);
  AudioInfoTag *const from = source ? source->infotag() : nullptr;
  AudioInfoTag *const to = target ? target->infotag() : nullptr;
  if (!from || !to) return false;
  // A file that is written in place is torn for a moment, so none is without need.
  if (replace && haveSamePictures(*from, *to)) return true;
  if (replace) to->removeAllImages();
  for (const ID3ImagePtr &image : from->images()) to->addImage(image);
  QString error;
  if (target->writeToOriginalPathWithErrorRefreshiTunes(&error, true)) return true;
  BMLog("copyArtwork... couldn't write because:\n %@\n %@", toPath, error);
  return false;
}
