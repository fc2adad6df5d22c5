#pragma once

#include <QByteArrayView>
#include <QString>
#include <vector>

#include "app/library/PropertyListTag.h"
#include "app/library/PropertyListTexts.h"
#include "values/Value.h"

/// One forward pass over the bytes of an XML property list, which builds the containers as their tags pass
/// and takes whatever looks enough like a list. No recursion. One object reads one list; one thread.
class PropertyListPass {
 public:
  /// The bytes must outlive this object and not change.
  explicit PropertyListPass(QByteArrayView data);

  /// Reads to the end or the first error. The root container, null if there is none; after an error it holds
  /// what was read before.
  Value read();

  /// Empty if all went well: a tag that is no ASCII and a text without a decoding are the only errors.
  const QString &error() const { return errorText; }
  const PropertyListCounts &counts() const { return texts.counts(); }

 private:
  /// A container that is open. A dictionary's first entries wait in `run` from `runStart` on, so that it is
  /// made with no more room than it needs.
  struct Frame {
    Array array;
    Dictionary dictionary;
    size_t runStart = 0;
    bool isInRun = false;
  };

  const char *turn(const char *at);
  const char *takeLikelyKey(const char *text);
  void takeText(PropertyListTag tag, QByteArrayView bytes);
  void takeKey(QByteArrayView bytes);
  Value valueOf(PropertyListTag tag, QByteArrayView bytes);
  void open(PropertyListTag tag);
  void close();
  void settle(Frame &frame);
  void store(Value value);

  const char *const begin;
  const char *const end;
  PropertyListTexts texts;
  std::vector<Frame> stack;
  std::vector<DictionaryEntry> run;
  KnownKey *key;
  QString errorText;
};
