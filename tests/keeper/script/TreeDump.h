#pragma once

#include "keeper/script/ScriptTree.h"

/// Trees as short texts, for tests to compare: `(set x (+ 1 2))`.
namespace treeDump {
QString of(const scriptTree::Script &script);
}  // namespace treeDump
