#pragma once

#include <QString>

/// What the store's operations throw when the disk or the file fails them: one line that says what, where and
/// why. Nothing of the change that threw stands. Caught by whoever answers the script; it never crosses a
/// thread.
struct StoreError {
  QString message;
};
