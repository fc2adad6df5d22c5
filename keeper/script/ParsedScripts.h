#pragma once

#include <QHash>
#include <QString>
#include <list>
#include <mutex>

#include "keeper/script/ScriptParser.h"

/// Keeps the trees of the texts that were parsed last, so that a text that comes again costs one look-up. Any
/// thread, and many at once: texts that are new are parsed outside the lock, and what is handed out stays
/// valid as long as its holder wants it.
class ParsedScripts {
 public:
  /// How many trees are kept, and of texts of how many UTF-16 units together; the ones that nobody asked for
  /// longest go first. A text that is longer than all of that alone is parsed and not kept.
  static constexpr size_t kMost = 256;
  static constexpr qsizetype kMostUnits = 1 << 20;

  /// What the lookup answers for a name must stay the same for the life of this.
  explicit ParsedScripts(ScriptDictionaryLookup dictionaries);

  /// The tree of a text. Throws what ScriptParser::parse throws; failures are not kept.
  ParsedScriptPtr parsed(const QString &source);

 private:
  /// Both under the lock.
  ParsedScriptPtr kept(const QString &source);
  void keep(const ParsedScriptPtr &script);

  const ScriptDictionaryLookup dictionaries;

  std::mutex mutex;
  /// Guarded by the mutex: the trees, the last asked for in front, and where each text's is.
  std::list<ParsedScriptPtr> scripts;
  QHash<QString, std::list<ParsedScriptPtr>::iterator> places;
  qsizetype units = 0;
};
