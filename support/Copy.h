#pragma once

#include "values/NotFound.h"
#include "values/Value.h"

/// A copy of a whole tree that shares nothing observable with it. Each container is mutable if and only if
/// its source is. Members that are nothing are left out, with a line in the log. Does not recurse; memory is
/// shared until a change.
Value copyDeep(const Value &source);
Array copyDeep(const Array &source);
Dictionary copyDeep(const Dictionary &source);

/// The same as `copyDeep`: here every result is owned by its holder.
Value recursiveCopyAutoreleased(const Value &source);

/// Where this very container stands in the list; `kNotFound` if it does not, equal ones not counting, and for
/// leaves, which have no identity.
qint64 indexOfObjectWithPointer(const Array &array, const Value &object);
