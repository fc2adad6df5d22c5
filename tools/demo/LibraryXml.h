#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <vector>

#include "values/Date.h"
#include "values/Key.h"

/// Writes a property list in exactly the shape in which iTunes writes its library: tabs, a line for each key,
/// number references for the three signs that XML keeps for itself. Buffered; holds about a megabyte.
class LibraryXml {
 public:
  /// `output` is open for writing and outlives this object.
  explicit LibraryXml(QFile &output) : file(output) {}
  LibraryXml(const LibraryXml &) = delete;

  /// The header, the document type and the opening of the root dictionary.
  void begin();
  /// Closes the root and writes what is left. False if anything could not be written.
  [[nodiscard]] bool finish();

  void integer(Key key, qint64 value);
  void text(Key key, const QString &value);
  /// The value is written as it stands: plain ASCII without signs of XML.
  void plain(Key key, const QByteArray &value);
  void date(Key key, Date value);
  void boolean(Key key, bool value);
  void data(Key key, const QByteArray &value);

  /// A container under a key, or in an array without one. Each is ended by `end`.
  void beginDictionary(Key key = {});
  /// The same under a number as key.
  void beginNumberedDictionary(int number);
  void beginArray(Key key);
  void end();

 private:
  enum class Container : char { Dictionary, Array };

  void keyLine(Key key) { keyLine(key.text().toLatin1()); }
  void keyLine(const QByteArray &key);
  void openDictionary();
  void appendEscaped(const QString &value);
  void indent() { buffer.append(open.size(), '\t'); }
  void lineEnd();

  QFile &file;
  QByteArray buffer;
  std::vector<Container> open;
  bool failed = false;
};

/// 16 upper-case hexadecimal digits.
QByteArray persistentID(quint64 number);
/// The address of an absolute path, percent-escaped as iTunes does it.
QString fileAddress(const QString &path);
