#include "text/SimplifierTable.h"

#include <algorithm>

#include "text/Search.h"

namespace {

bool isAscii(const QString &text) {
  return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80; });
}

const Key kTrailingS(u"s ");

}  // namespace

SimplifierTable::SimplifierTable(const Dictionary &simplifiers, bool removeTrailingS) {
  const Dictionary table = simplifiers.isNull() ? Dictionary::make() : simplifiers.copyMembers(true);
  table.set(kTrailingS, removeTrailingS ? Value(QStringLiteral(" ")) : Value());
  for (const DictionaryEntry &entry : table) {
    if (const QString &key = entry.key.text(); entry.value.isText() && !key.isEmpty())
      rows.push_back({key, foldedCase(key), entry.value.toText()});
  }
  std::stable_sort(rows.begin(), rows.end(),
                   [](const Row &a, const Row &b) { return a.key.size() > b.key.size(); });
  prepareBytes();
}

void SimplifierTable::prepareBytes() {
  std::vector<std::pair<std::string, std::string>> pairs;
  for (const Row &row : rows) {
    if (!isAscii(row.value)) return;
    // In an ASCII text, with ASCII put in, no other key can occur.
    if (isAscii(row.foldedKey))
      pairs.emplace_back(row.foldedKey.toLatin1().toStdString(),
                         foldedCase(row.value).toLatin1().toStdString());
  }
  byteReplacements.emplace(std::move(pairs));
}

QString SimplifierTable::applied(const QString &text) const {
  QString working = text;
  for (const Row &row : rows) working = replacingFolded(working, row.foldedKey, row.value);
  return working;
}
