#pragma once

#include <QString>
#include <vector>

#include "app/state/ProblemView.h"
#include "values/Value.h"

/// How a column shows the value under its key.
enum class ColumnFormat { Text, Path, Mark, Stars, RightText, Size, Number, NameType, Spellings };

struct ProblemColumn {
  Key key;
  /// The string-table key of the title; "ColumnToolTip-" in place of "Column-" explains it where there is
  /// such a text.
  QString titleKey;
  ColumnFormat format = ColumnFormat::Text;
  /// The first width in pixels, before the user changes it.
  int width = 100;
  /// Takes part in what is left of the table's width.
  bool isFlexible = false;

  bool isMark() const { return format == ColumnFormat::Mark; }
  Qt::Alignment alignment() const;
};

/// The columns of a tab's table, in their first order.
const std::vector<ProblemColumn> &columnsOfTab(ProblemTab tab);
/// The column with a format; -1 if the tab has none.
int columnWithFormat(ProblemTab tab, ColumnFormat format);

/// What a value looks like in a column; empty for an absent one.
QString columnText(const ProblemColumn &column, const Value &value);
/// What a column's header tells of it; empty if the title says all.
QString columnToolTip(const ProblemColumn &column);
