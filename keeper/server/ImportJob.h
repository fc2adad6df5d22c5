#pragma once

#include <functional>

#include "keeper/library/LibraryImport.h"
#include "platform/keeper/KeeperProtocol.h"

/// An import as a user asks for it: with its mapping, and with a report to read.
namespace importJob {

/// Fills the store from the file. The report says what came, and, where most files are not where the library
/// names them, which mapping would find how many of them: it is applied when it is asked for, never by
/// itself. A failure leaves the store as it was. The store's thread; does not throw.
ScriptOutcome run(LibraryStore &store, const keeperProtocol::ImportRequest &request,
                  const std::function<bool(const ImportProgress &)> &onProgress);

}  // namespace importJob
