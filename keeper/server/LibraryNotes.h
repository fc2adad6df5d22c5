#pragma once

#include "keeper/library/LibraryStore.h"

/// What the keeper notes in a store about where its library came from. The store's thread; throws
/// `StoreError`.
namespace libraryNotes {

/// The file that a new library has still to take in; empty if there is none.
QString waitingFile(LibraryStore &store);
void setWaitingFile(LibraryStore &store, const QString &file);

/// The library as it stands came from a file, or is new: until it is changed it needs no XML of ours, and the
/// file that it came from stays where it is.
void setUntouched(LibraryStore &store);
bool isUntouched(LibraryStore &store);

}  // namespace libraryNotes
