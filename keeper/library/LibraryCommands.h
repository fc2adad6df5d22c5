#pragma once

#include "keeper/library/KeeperContext.h"
#include "keeper/script/ScriptObject.h"

/// The commands that change the library or look something up in it. Each is one transaction, whatever it is
/// given, and answers its reply.
namespace libraryCommands {

/// `add FILES [to PLAYLIST]`
ScriptValue add(KeeperContext &context, const ScriptCommand &command);
/// Tracks through an ordinary playlist lose that entry; tracks through the library go from everywhere, their
/// files stay. Playlists go with their entries, folders with what is in them. Artworks go from their file.
/// -10003 for the library itself and for entries of smart playlists.
ScriptValue remove(KeeperContext &context, const ScriptCommand &command);
/// `duplicate TRACKS to PLAYLIST`: appends them in order, and answers the new entries. -10003 where a
/// playlist does not take tracks, -10006 for the library.
ScriptValue duplicate(KeeperContext &context, const ScriptCommand &command);
/// `move PLAYLISTS to FOLDER`; the library or the source stand for the top. -10006 for a folder that would
/// lie in itself, -1708 for tracks.
ScriptValue move(KeeperContext &context, const ScriptCommand &command);
/// `make new user playlist|folder playlist [at FOLDER] [with properties {…}]`, and
/// `make new artwork at TRACK with properties {data:…}`
ScriptValue make(KeeperContext &context, const ScriptCommand &command);
/// -43 if a file is gone; those before it in a list have been refreshed.
ScriptValue refresh(KeeperContext &context, const ScriptCommand &command);
/// `search PLAYLIST for TEXT [only FIELD]`: the tracks in which each word of the text begins a word. -50 for
/// a text without words.
ScriptValue search(KeeperContext &context, const ScriptCommand &command);

}  // namespace libraryCommands
