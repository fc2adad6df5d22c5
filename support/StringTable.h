#pragma once

#include <QByteArrayView>
#include <QHash>
#include <QString>
#include <QStringList>

/// One table of texts for the user: `"key" = "text";` lines in UTF-8 with /* */ and // comments and the
/// escapes
/// \" \\ \n \t. What cannot be read costs its own line only.
class StringTable {
 public:
  /// Reads a table; `problems` gets a line for each place that was skipped.
  static StringTable parse(QByteArrayView utf8, QStringList *problems);

  /// The key's text; null if the table lacks it.
  QString text(const QString &key) const { return texts.value(key); }
  QStringList keys() const { return texts.keys(); }

 private:
  QHash<QString, QString> texts;
};

/// The text of a key from the resource folder's "strings/en/<table>.strings", read on first use and kept. A
/// missing key gives the key itself, told to the log once. Any thread.
QString tableText(const QString &key, const QString &table = QStringLiteral("Localizable"));

/// Forgets the tables read, for a fresh start on another platform (each test's).
void resetStringTables();
