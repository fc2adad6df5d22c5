#include "support/StringTable.h"

#include <QFile>
#include <QMutex>
#include <QSet>

#include "platform/Platform.h"
#include "support/BMLog.h"

namespace {

/// Walks over the text of a table.
class TableReader {
 public:
  explicit TableReader(QString source) : text(std::move(source)) {}

  /// Moves over blanks and comments; false at the end.
  bool skipToNext() {
    while (at < text.size()) {
      if (text[at].isSpace() || text[at] == QChar::ByteOrderMark) {
        ++at;
      } else if (QStringView(text).mid(at).startsWith(u"/*")) {
        jumpBehind(text.indexOf(u"*/", at + 2), 2);
      } else if (QStringView(text).mid(at).startsWith(u"//")) {
        jumpBehind(text.indexOf(u'\n', at), 1);
      } else {
        return true;
      }
    }
    return false;
  }

  bool take(QChar expected) {
    if (!skipToNext() || text[at] != expected) return false;
    ++at;
    return true;
  }

  /// A quoted text; nothing if there is none or it does not end.
  std::optional<QString> quoted() {
    if (!take(u'"')) return std::nullopt;
    QString result(u""_qs);
    while (at < text.size() && text[at] != u'"') {
      const QChar unit = text[at++];
      if (unit != u'\\') {
        result += unit;
      } else if (at < text.size()) {
        result += unescaped(text[at++]);
      }
    }
    if (at >= text.size()) return std::nullopt;
    ++at;
    return result;
  }

  qsizetype position() const { return at; }
  int lineAt(qsizetype position) const { return 1 + int(QStringView(text).left(position).count(u'\n')); }
  void skipLineAt(qsizetype position) { jumpBehind(text.indexOf(u'\n', position), 1); }

 private:
  void jumpBehind(qsizetype found, qsizetype length) { at = found < 0 ? text.size() : found + length; }
  static QChar unescaped(QChar letter) {
    return letter == u'n' ? QChar(u'\n') : letter == u't' ? QChar(u'\t') : letter;
  }

  const QString text;
  qsizetype at = 0;
};

struct Tables {
  QMutex lock;
  QHash<QString, StringTable> tables;
  QSet<QString> missing;
};

Tables &tables() {
  static Tables &made = *new Tables;
  return made;
}

StringTable load(const QString &table) {
  const QString path =
      formatText(QStringLiteral("%@/strings/en/%@.strings"), {platform().bundle.resourceFolder, table});
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    BMLog("!!! string table %@: %@", path, file.errorString());
    return {};
  }
  QStringList problems;
  StringTable result = StringTable::parse(file.readAll(), &problems);
  for (const QString &problem : problems) BMLog("!!! string table %@: %@", path, problem);
  return result;
}

}  // namespace

StringTable StringTable::parse(QByteArrayView utf8, QStringList *problems) {
  StringTable table;
  TableReader reader(QString::fromUtf8(utf8.data(), utf8.size()));
  while (reader.skipToNext()) {
    const qsizetype start = reader.position();
    const std::optional<QString> key = reader.quoted();
    const std::optional<QString> text = key && reader.take(u'=') ? reader.quoted() : std::nullopt;
    if (text && reader.take(u';')) {
      table.texts.insert(*key, *text);
    } else {
      *problems += QStringLiteral("line %1 is not \"key\" = \"text\";").arg(reader.lineAt(start));
      reader.skipLineAt(start);
    }
  }
  return table;
}

QString tableText(const QString &key, const QString &table) {
  Tables &state = tables();
  const QMutexLocker locker(&state.lock);
  auto found = state.tables.find(table);
  if (found == state.tables.end()) found = state.tables.insert(table, load(table));
  const QString text = found->text(key);
  if (!text.isNull()) return text;
  if (!state.missing.contains(key)) {
    state.missing.insert(key);
    BMLog("!!! no text for \"%@\" in the string table %@", key, table);
  }
  return key;
}

void resetStringTables() {
  Tables &state = tables();
  const QMutexLocker locker(&state.lock);
  state.tables.clear();
  state.missing.clear();
}
