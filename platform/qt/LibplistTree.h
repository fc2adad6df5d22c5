#pragma once

#include <plist/plist.h>

#include <QString>

#include "values/Value.h"

/// The values of a tree of libplist's, all containers mutable. UIDs become whole numbers; whole numbers of
/// 2^63 and more their two's complement. Does not recurse. The tree stays the caller's.
Value valueOfTree(plist_t tree);

/// A tree of libplist's for the values, the caller's to free. Null with a reason if they nest deeper than
/// `deepest`, or hold nothing or a text with the character NUL. Dates are kept within 68 years of 2001. Does
/// not recurse.
plist_t treeOfValue(const Value &root, int deepest, QString *reason);
