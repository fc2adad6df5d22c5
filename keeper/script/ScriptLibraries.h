#pragma once

#include <QHash>

#include "keeper/script/ScriptParser.h"
#include "values/Date.h"

/// Script texts in files, kept parsed as long as their file does not change. One thread.
class ScriptLibraries {
 public:
  explicit ScriptLibraries(ScriptDictionaryLookup dictionaries_) : dictionaries(std::move(dictionaries_)) {}

  /// The tree of a file's text, read as UTF-8 with or without a byte-order mark. -43 if there is no such
  /// file, -1752 for one that is no text or larger than 16 MiB; the parser's errors, whose range nobody
  /// outside understands and which is left out therefore.
  ParsedScriptPtr load(const QString &path);

  const ScriptDictionaryLookup dictionaries;

 private:
  struct Known {
    std::optional<Date> changed;
    qint64 size = 0;
    ParsedScriptPtr parsed;
  };
  QHash<QString, Known> known;
};
