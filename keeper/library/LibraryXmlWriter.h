#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <vector>

#include "platform/keeper/RecordCodec.h"

/// Writes a property list in the shape in which the music application writes its library: a key and its leaf
/// on one line, containers on lines of their own, tabs. Collects bytes and hands them on in large pieces. One
/// thread.
class LibraryXmlWriter {
 public:
  /// `sink` takes the pieces; what it throws goes through.
  LibraryXmlWriter(const RecordKeys &keys, std::function<void(QByteArrayView)> sink);

  void begin();
  /// Hands on what is left.
  void finish();

  void openDictionary();
  void openArray();
  void closeDictionary() { close("</dict>\n"); }
  void closeArray() { close("</array>\n"); }
  /// The key of the next value. A container opens on the next line.
  void key(const QString &text);
  void keyOfContainer(const QString &text);
  void integer(qint64 number);

  /// A record's entries inside the open dictionary. An entry of a key number for which `replace` answers true
  /// was written by it.
  void entries(RecordCursor cursor, const std::function<bool(quint32)> &replace = {});

 private:
  void indent();
  void close(const char *tag);
  void recordKey(quint32 number, bool isContainer);
  void leaf(const RecordCursor &cursor);
  void value(const RecordCursor &cursor);
  void members(RecordCursor cursor);
  void latin1(QByteArrayView text);
  void utf16(const QString &text);
  void data(QByteArrayView bytes);
  void date(double seconds);
  void handOn();

  const RecordKeys &keys;
  std::function<void(QByteArrayView)> sink;
  QByteArray buffer;
  int depth = 0;
  /// "<key>...</key>" by the key's number; empty until it is needed.
  std::vector<QByteArray> keyTags;
};
