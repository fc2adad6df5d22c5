#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "text/ByteReplacements.h"
#include "values/Value.h"

/// The spelling equivalences of one load: keys, longest first, each with the text that takes its place.
/// Unchangeable once made; any thread.
class SimplifierTable {
 public:
  /// The texts of `simplifiers`, with the key "s " (for one blank) put in or taken out. Keys of one length
  /// keep the dictionary's order.
  SimplifierTable(const Dictionary &simplifiers, bool removeTrailingS);

  /// The replacements as bytes; null when a value holds more than ASCII and only `applied` will do.
  const ByteReplacements *bytes() const { return byteReplacements ? &*byteReplacements : nullptr; }
  /// The text after every replacement, each on the result of the one before, whatever the case. Slow.
  QString applied(const QString &text) const;

 private:
  struct Row {
    QString key, foldedKey, value;
  };
  void prepareBytes();

  std::vector<Row> rows;
  std::optional<ByteReplacements> byteReplacements;
};
