#pragma once

#include <QByteArrayView>
#include <array>
#include <vector>

#include "platform/LibraryFramework.h"
#include "platform/keeper/RecordCodec.h"

/// Makes tracks of the records of a store. Remembers texts that repeat, in a bounded table, so that equal
/// names of artists and albums are stored once. One thread.
class RecordItems {
 public:
  /// Looks up what the numbers of keys mean. Before the first record, and when the keys have changed.
  void setKeys(const RecordKeys &keys);
  /// The track of a record, valid until the next call.
  const LibraryMediaItem &item(quint64 persistentID, int flags, QByteArrayView record);

 private:
  using TextField = QString LibraryMediaItem::*;
  using DateField = std::optional<Date> LibraryMediaItem::*;
  /// What a key's value goes to.
  struct Target {
    enum class Kind { Nothing, Text, SharedText, Date, Number } kind = Kind::Nothing;
    TextField text = nullptr;
    DateField date = nullptr;
    void (*number)(LibraryMediaItem &, qint64) = nullptr;
    /// The place of the key's last text.
    size_t place = 0;
  };
  struct KnownText {
    QByteArray bytes;
    RecordCursor::Type type = RecordCursor::Type::Null;
    QString text;
  };

  static Target targetOf(Key key);
  void take(const RecordCursor &entry);
  const QString &shared(const RecordCursor &entry, KnownText &last);

  std::vector<Target> targets;
  std::vector<KnownText> lastTexts;
  std::vector<KnownText> known;
  LibraryMediaItem made;
};
