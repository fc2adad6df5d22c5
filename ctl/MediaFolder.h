#pragma once

#include "ctl/Terminal.h"

/// True if nothing or a folder is given; else false with a message.
[[nodiscard]] bool isMediaFolderUsable(const QString &given, Terminal &terminal);

/// Sets the media folder that was given, absolute and without a slash at its end, in the settings in force;
/// nothing if none was.
void setMediaFolder(const QString &given);
