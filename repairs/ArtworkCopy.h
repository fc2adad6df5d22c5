#pragma once

#include <QString>

/// Gives the file at one path the pictures of another: behind its own, or with `replace` in their place, so
/// that a source without pictures strips the target; one that has these very pictures is left alone. False if
/// a file has no tag, or with a line in the log if the target could not be written. A repair's thread.
bool copyArtworkFromSongAtPathToSongAtPathReplace(const QString &fromPath, const QString &toPath,
                                                  bool replace);
