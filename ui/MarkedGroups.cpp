#include "ui/MarkedGroups.h"

#include "values/Keys.h"

namespace {

qint64 groupOf(const Array &rows, qsizetype row) {
  return rows.at(row).toDictionary().value(keys::DupeGroup).toInteger();
}

}  // namespace

MarkedGroups::Range MarkedGroups::groupFrom(const Array &rows, qsizetype first) {
  Range group{first, first + 1};
  const qint64 number = groupOf(rows, first);
  while (group.end < rows.size() && groupOf(rows, group.end) == number) ++group.end;
  return group;
}

MarkedGroups::Range MarkedGroups::groupAround(const Array &rows, qsizetype row) {
  const qint64 number = groupOf(rows, row);
  while (row > 0 && groupOf(rows, row - 1) == number) --row;
  return groupFrom(rows, row);
}

bool MarkedGroups::isMarked(const Array &rows, Range group) {
  bool info = false, audio = false;
  for (qsizetype i = group.first; i < group.end; ++i) {
    const Dictionary &row = rows.at(i).toDictionary();
    info = info || row.value(keys::markInfo).toBool();
    audio = audio || row.value(keys::markAudio).toBool();
  }
  return info && audio;
}

void MarkedGroups::count(const Array &rows) {
  counted = rows;
  countedRows = rows.size();
  marked = 0;
  for (Range group; group.end < countedRows;) {
    group = groupFrom(rows, group.end);
    marked += isMarked(rows, group);
  }
}

std::optional<qsizetype> MarkedGroups::firstOf(const Array &rows) {
  for (Range group; group.end < rows.size();) {
    group = groupFrom(rows, group.end);
    if (isMarked(rows, group)) return group.first;
  }
  return std::nullopt;
}

bool MarkedGroups::isAbout(const Array &rows) const {
  return !counted.isNull() && counted.isSame(rows) && countedRows == rows.size();
}

void MarkedGroups::groupWillChange(const Array &rows, Range group) {
  if (!isAbout(rows)) count(rows);
  if (isMarked(rows, group)) --marked;
}

void MarkedGroups::groupDidChange(const Array &rows, Range group) {
  if (isMarked(rows, group)) ++marked;
}
