#include "ui/MarkedGroups.h"

#include "values/Keys.h"

namespace {

qint64 groupOf(const Array &rows, qsizetype row) {
  return rows.at(row).toDictionary().value(keys::DupeGroup).toInteger();
}

}  // namespace

MarkedGroups::Range MarkedGroups::groupAround(const Array &rows, qsizetype row) {
  Range group{row, row + 1};
  const qint64 number = groupOf(rows, row);
  while (group.first > 0 && groupOf(rows, group.first - 1) == number) --group.first;
  while (group.end < rows.size() && groupOf(rows, group.end) == number) ++group.end;
  return group;
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
  qint64 number = 0;
  bool info = false, audio = false;
  for (qsizetype i = 0; i < countedRows; ++i) {
    const Dictionary &row = rows.at(i).toDictionary();
    const qint64 own = row.value(keys::DupeGroup).toInteger();
    if (i == 0 || own != number) info = audio = false;
    number = own;
    const bool wasMarked = info && audio;
    info = info || row.value(keys::markInfo).toBool();
    audio = audio || row.value(keys::markAudio).toBool();
    if (!wasMarked && info && audio) ++marked;
  }
}

std::optional<qsizetype> MarkedGroups::firstOf(const Array &rows) {
  for (qsizetype i = 0; i < rows.size();) {
    Range group{i, i + 1};
    while (group.end < rows.size() && groupOf(rows, group.end) == groupOf(rows, i)) ++group.end;
    if (isMarked(rows, group)) return i;
    i = group.end;
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
