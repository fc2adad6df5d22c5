#include "scanners/FileMemory.h"

#include "values/Keys.h"

FileMemory::FileMemory(const Array &allTracks, FileExists onDisk)
    : tracks(allTracks), fileExists(std::move(onDisk)), answers(size_t(allTracks.size())) {}

bool FileMemory::exists(quint32 track) {
  Answer &answer = answers[track];
  if (answer == Answer::Unasked) {
    const QString &path = tracks.at(track).toDictionary().value(keys::Path).toText();
    answer = !path.isEmpty() && fileExists(path) ? Answer::Exists : Answer::Gone;
  }
  return answer == Answer::Exists;
}
