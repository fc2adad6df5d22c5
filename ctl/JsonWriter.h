#pragma once

#include <QString>
#include <iosfwd>
#include <string>
#include <vector>

#include "values/Value.h"

/// Writes JSON to a stream, piece by piece or a whole tree at a time, in one line: keys in the order in which
/// they are given, whole numbers exact, reals in the shortest form that reads back the same, dates as ISO
/// text, data as base64, what is no number as null. Lone surrogates are written as escapes. Nothing recurses.
/// The caller opens and closes in step; the stream outlives the writer.
class JsonWriter {
 public:
  explicit JsonWriter(std::ostream &stream) : out(stream) {}
  JsonWriter(const JsonWriter &) = delete;
  /// Hands what is left to the stream.
  ~JsonWriter();

  void beginObject() { begin('{'); }
  void endObject() { end('}'); }
  void beginArray() { begin('['); }
  void endArray() { end(']'); }
  /// The key of the next value of the open object.
  void key(QStringView text);
  /// A leaf, or a tree with all that is in it.
  void value(const Value &tree);
  /// The text, or null for an empty one.
  void textOrNull(const QString &text) { value(text.isEmpty() ? Value() : Value(text)); }
  void member(QStringView name, const Value &tree) {
    key(name);
    value(tree);
  }
  /// Ends a line, with nothing open.
  void endLine();

 private:
  void separate();
  void begin(char bracket);
  void end(char bracket);
  void leaf(const Value &leaf);
  void quoted(QStringView text);
  void flush();

  std::ostream &out;
  std::string buffer;
  /// For each open object or array, whether it has something inside already.
  std::vector<bool> filled;
  bool behindKey = false;
};
