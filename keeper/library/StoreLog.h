#pragma once

#include <QString>

/// The log beside a store's file, in which commits stand before they reach the file itself.
namespace storeLog {

/// Waits until the disk has every commit that was made before the call, of whatever connection. Empty, or one
/// line that says why that is not sure; what was committed may then be lost when the machine stops. Any
/// thread, beside a thread that goes on committing.
[[nodiscard]] QString flush(const QString &storePath);

}  // namespace storeLog
