#pragma once

#include <QString>

/// How long the audio of an MPEG file is. The tag's reader tells whole seconds only, cut off.
namespace mpegLength {

/// In milliseconds, from the count of frames that an encoder wrote into the first frame, else from the bytes
/// at the first frame's bit rate. `ahead` and `behind` are the bytes of the tags around the audio. 0 if there
/// is no audio that can be told. Reads the file's beginning; any thread.
qint64 milliseconds(const QString &path, quint64 ahead, quint64 behind);

}  // namespace mpegLength
