#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "values/Value.h"

/// True if a file, or anything else, stands at a path.
using FileExists = std::function<bool(const QString &path)>;

/// Whether the files of tracks exist, asked of the disk at most once for each track. One thread.
class FileMemory {
 public:
  /// Answers by the "Path" of each of `tracks`.
  FileMemory(const Array &tracks, FileExists fileExists);

  /// False for a track without a path.
  bool exists(quint32 track);

 private:
  enum class Answer : unsigned char { Unasked, Exists, Gone };

  Array tracks;
  FileExists fileExists;
  std::vector<Answer> answers;
};
