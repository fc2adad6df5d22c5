#pragma once

#include <QString>
#include <vector>

#include "app/state/ProblemView.h"
#include "values/Value.h"

/// How a column shows the value under its key.
enum class ColumnFormat { Text, Path, Time, BitRate, Size, Number };

struct ProblemColumn {
  Key key;
  /// The string-table key of the title.
  QString titleKey;
  ColumnFormat format = ColumnFormat::Text;
  /// The first width in pixels, before the user changes it.
  int width = 100;

  bool isRightAligned() const { return format != ColumnFormat::Text && format != ColumnFormat::Path; }
};

/// The columns of a tab's table, in their first order.
const std::vector<ProblemColumn> &columnsOfTab(ProblemTab tab);

/// What a row shows in a column: empty for an absent value. Times are "m:ss" or "h:mm:ss", parts of a second
/// rounded up.
QString columnText(const ProblemColumn &column, const Dictionary &row);
