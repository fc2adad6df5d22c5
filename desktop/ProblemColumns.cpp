#include "desktop/ProblemColumns.h"

#include <QLocale>
#include <cmath>

#include "bridge/LocalizedMessage.h"
#include "values/Keys.h"

namespace {

QString timeText(qint64 milliseconds) {
  if (milliseconds < 0) return {};
  const qint64 seconds = (milliseconds + 999) / 1000;
  const QString tail = QStringLiteral("%1").arg(seconds % 60, 2, 10, QChar(u'0'));
  if (seconds < 3600) return QStringLiteral("%1:%2").arg(seconds / 60).arg(tail);
  return QStringLiteral("%1:%2:%3").arg(seconds / 3600).arg(seconds / 60 % 60, 2, 10, QChar(u'0')).arg(tail);
}

/// A number as plain text; a text as it stands.
QString plainText(const Value &value) {
  return value.isNumber() ? QString::number(value.toInteger()) : value.toText();
}

}  // namespace

const std::vector<ProblemColumn> &columnsOfTab(ProblemTab tab) {
  static const ProblemColumn name{keys::Name, QStringLiteral("Column-Name"), ColumnFormat::Text, 200};
  static const ProblemColumn artist{keys::Artist, QStringLiteral("Column-Artist"), ColumnFormat::Text, 150};
  static const ProblemColumn album{keys::Album, QStringLiteral("Column-Album"), ColumnFormat::Text, 150};
  static const ProblemColumn path{keys::Path, QStringLiteral("Column-Path"), ColumnFormat::Path, 260};
  static const std::vector<ProblemColumn> duplicates{
      name,
      artist,
      album,
      {keys::TotalTime, QStringLiteral("Column-Time"), ColumnFormat::Time, 60},
      {keys::Kind, QStringLiteral("Column-Kind"), ColumnFormat::Text, 130},
      {keys::BitRate, QStringLiteral("Column-BitRate"), ColumnFormat::BitRate, 84},
      {keys::Size, QStringLiteral("Column-Size"), ColumnFormat::Size, 76},
      {keys::Year, QStringLiteral("Column-Year"), ColumnFormat::Number, 56},
      path};
  static const std::vector<ProblemColumn> names{
      {Key(u"inconType"), QStringLiteral("Column-NameType"), ColumnFormat::Text, 120},
      {Key(u"calc_inconsistentName"), QStringLiteral("Column-Spellings"), ColumnFormat::Text, 400}};
  static const std::vector<ProblemColumn> files{name, artist, album, path};
  if (tab == ProblemTab::Duplicates) return duplicates;
  return tab == ProblemTab::Names ? names : files;
}

QString columnText(const ProblemColumn &column, const Dictionary &row) {
  const Value &value = row.value(column.key);
  if (value.isNull()) return {};
  switch (column.format) {
    case ColumnFormat::Time:
      return timeText(value.toInteger());
    case ColumnFormat::BitRate:
      return value.toInteger() > 0 ? localizedMessage(QStringLiteral("Cell-BitRate"), value.toInteger())
                                   : QString();
    case ColumnFormat::Size:
      return QLocale().formattedDataSize(value.toInteger(), 1, QLocale::DataSizeSIFormat);
    case ColumnFormat::Number:
      return value.toInteger() > 0 ? plainText(value) : QString();
    case ColumnFormat::Text:
    case ColumnFormat::Path:
      return plainText(value);
  }
  return {};
}
