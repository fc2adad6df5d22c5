#pragma once

#include "keeper/library/KeeperContext.h"
#include "keeper/script/ScriptObject.h"

/// The playlists of the library as elements of a class, in the library's order.
namespace playlistElements {

/// True for a class of playlists.
bool isPlaylistClass(const QString &className);
ScriptObjects all(KeeperContext &context, const QString &className);
/// By name, persistent ID, id, special kind and flags; nothing for other properties.
std::optional<ScriptObjects> where(KeeperContext &context, const QString &className, const QString &property,
                                   const ScriptValue &value);
/// The properties that need no look into the tracks; nothing for the others.
std::optional<ScriptListItems> column(KeeperContext &context, const QString &className,
                                      const QString &property);

}  // namespace playlistElements
