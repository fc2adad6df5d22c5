#pragma once

#include "desktop/ProblemColumns.h"

class QHeaderView;

/// Where the columns of a table stand and how wide they are, kept by the columns' keys, so that a layout
/// still fits when columns have been added or have gone.
namespace columnLayout {

/// The columns in the order shown, as a list of dictionaries with "key" and "width".
Value save(const QHeaderView &header, const std::vector<ProblemColumn> &columns);
/// Arranges the columns as they were saved; those the layout does not know keep their first place and width.
/// False, and no change, for anything that is no such layout.
bool restore(QHeaderView &header, const std::vector<ProblemColumn> &columns, const Value &layout);
/// Gives the columns the whole width: fixed ones their first width or what their title needs, flexible ones
/// the rest in proportion, but at least half of theirs.
void fit(QHeaderView &header, const std::vector<ProblemColumn> &columns, int width);

}  // namespace columnLayout
