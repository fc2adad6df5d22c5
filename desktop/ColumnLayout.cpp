#include "desktop/ColumnLayout.h"

#include <QHeaderView>

#include "values/Keys.h"

namespace columnLayout {
namespace {

constexpr int kWidestColumn = 5000;

int indexOfKey(const std::vector<ProblemColumn> &columns, const QString &key) {
  const auto found = std::find_if(columns.begin(), columns.end(),
                                  [&key](const ProblemColumn &c) { return c.key.text() == key; });
  return found == columns.end() ? -1 : int(found - columns.begin());
}

int firstWidth(const QHeaderView &header, const std::vector<ProblemColumn> &columns, int index) {
  return qMax(columns[size_t(index)].width, header.sectionSizeHint(index));
}

}  // namespace

Value save(const QHeaderView &header, const std::vector<ProblemColumn> &columns) {
  const Array layout = Array::make();
  for (int visual = 0; visual < header.count(); ++visual) {
    const int index = header.logicalIndex(visual);
    const Dictionary column = Dictionary::make();
    column.set(keys::columnKey, columns[size_t(index)].key.text());
    column.set(keys::columnWidth, header.sectionSize(index));
    layout.append(column);
  }
  return layout;
}

bool restore(QHeaderView &header, const std::vector<ProblemColumn> &columns, const Value &layout) {
  std::vector<int> order;
  std::vector<int> widths(columns.size(), 0);
  for (const Value &member : layout.toArray()) {
    const int index = indexOfKey(columns, member.toDictionary().value(keys::columnKey).toText());
    const qint64 width = member.toDictionary().value(keys::columnWidth).toInteger();
    if (index < 0 || width < 1 || widths[size_t(index)] > 0) continue;
    order.push_back(index);
    widths[size_t(index)] = int(qMin<qint64>(width, kWidestColumn));
  }
  if (order.empty()) return false;
  for (int index = 0; index < int(columns.size()); ++index) {
    if (widths[size_t(index)] > 0) continue;
    // A new column stands behind the one that it follows at first.
    const auto before = std::find(order.begin(), order.end(), index - 1);
    order.insert(before == order.end() ? order.begin() : before + 1, index);
    widths[size_t(index)] = firstWidth(header, columns, index);
  }
  for (int visual = 0; visual < int(order.size()); ++visual) {
    header.moveSection(header.visualIndex(order[size_t(visual)]), visual);
    header.resizeSection(order[size_t(visual)], widths[size_t(order[size_t(visual)])]);
  }
  return true;
}

void fit(QHeaderView &header, const std::vector<ProblemColumn> &columns, int width) {
  int fixed = 0, shared = 0;
  for (int i = 0; i < int(columns.size()); ++i) {
    if (columns[size_t(i)].isFlexible) {
      shared += columns[size_t(i)].width;
    } else {
      fixed += firstWidth(header, columns, i);
    }
  }
  const double scale = qMax(0.5, double(width - fixed) / qMax(1, shared));
  for (int i = 0; i < int(columns.size()); ++i) {
    const bool isFlexible = columns[size_t(i)].isFlexible;
    header.resizeSection(i,
                         isFlexible ? int(columns[size_t(i)].width * scale) : firstWidth(header, columns, i));
  }
}

}  // namespace columnLayout
