#pragma once

#include <QByteArrayView>
#include <QString>
#include <optional>
#include <vector>

#include "values/Value.h"

/// Reads one JSON document. Strict: nothing but white space may stand around it, and the bytes must be UTF-8.
/// Objects keep the order of their keys; of several values for a key the last wins, in the first one's place,
/// and a null leaves no key. Whole numbers of up to 64 bits stay exact, others become real. A lone surrogate
/// written as an escape stays in the text. Does not recurse, however deep the document is. One document, one
/// reader, one thread.
class JsonReader {
 public:
  explicit JsonReader(QByteArrayView utf8) : bytes(utf8) {}

  /// The document's value; nothing with what is wrong and where in `error`.
  std::optional<Value> read(QString *error);

 private:
  bool fail(const char *what);
  void skipSpace();
  bool take(char expected);
  bool readDocument(Value *root);
  bool beginValue(Value *value, bool *isWhole);
  bool openContainer(const Value &container, char closing, Value *value, bool *isWhole);
  bool storeAndClose(Value *value, bool *isWhole);
  bool readKey();
  bool readWord(QByteArrayView word, const Value &meaning, Value *value);
  bool readNumber(Value *value);
  bool readDigits();
  bool readText(QString *text);
  bool readEscape(QString *text);

  const QByteArrayView bytes;
  qsizetype at = 0;
  QString problem;
  std::vector<Value> open;
  /// The key under which each open container will store its next value; absent for arrays.
  std::vector<Key> openKeys;
};
