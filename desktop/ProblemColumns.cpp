#include "desktop/ProblemColumns.h"

#include "bridge/LocalizedMessage.h"
#include "scanners/StyledText.h"
#include "support/SizeText.h"
#include "values/Keys.h"

namespace {

/// A number as plain text; a text as it stands.
QString numberOrText(const Value &value) {
  return value.isNumber() ? QString::number(value.toInteger()) : value.toText();
}

std::vector<ProblemColumn> duplicateColumns() {
  using F = ColumnFormat;
  return {{keys::markInfo, QStringLiteral("Column-Information"), F::Mark, 46},
          {keys::markAudio, QStringLiteral("Column-Audio"), F::Mark, 50},
          {keys::Name, QStringLiteral("Column-Name"), F::Text, 190, true},
          {keys::Artist, QStringLiteral("Column-Artist"), F::Text, 140, true},
          {keys::Album, QStringLiteral("Column-Album"), F::Text, 140, true},
          {keys::calc_rating, QStringLiteral("Column-Rating"), F::Stars, 74},
          {keys::calc_humanTime, QStringLiteral("Column-Time"), F::RightText, 58},
          {keys::calc_trackOfTotal, QStringLiteral("Column-Track"), F::RightText, 54},
          {keys::calc_type, QStringLiteral("Column-Type"), F::Text, 82},
          {keys::Size, QStringLiteral("Column-Size"), F::Size, 66},
          {keys::Year, QStringLiteral("Column-Year"), F::Number, 48},
          {keys::Path, QStringLiteral("Column-Path"), F::Path, 240, true}};
}

}  // namespace

Qt::Alignment ProblemColumn::alignment() const {
  switch (format) {
    case ColumnFormat::RightText:
    case ColumnFormat::Size:
    case ColumnFormat::Number:
      return Qt::AlignRight | Qt::AlignVCenter;
    case ColumnFormat::Mark:
      return Qt::AlignCenter;
    default:
      return Qt::AlignLeft | Qt::AlignVCenter;
  }
}

const std::vector<ProblemColumn> &columnsOfTab(ProblemTab tab) {
  static const std::vector<ProblemColumn> duplicates = duplicateColumns();
  static const std::vector<ProblemColumn> names{
      {keys::inconType, QStringLiteral("Column-NameType"), ColumnFormat::NameType, 110},
      {keys::calc_inconsistentName, QStringLiteral("Column-Spellings"), ColumnFormat::Spellings, 400, true}};
  static const std::vector<ProblemColumn> files{
      {keys::Name, QStringLiteral("Column-Name"), ColumnFormat::Text, 200, true},
      {keys::Artist, QStringLiteral("Column-Artist"), ColumnFormat::Text, 150, true},
      {keys::Album, QStringLiteral("Column-Album"), ColumnFormat::Text, 150, true},
      {keys::Path, QStringLiteral("Column-Path"), ColumnFormat::Path, 260, true}};
  if (tab == ProblemTab::Duplicates) return duplicates;
  return tab == ProblemTab::Names ? names : files;
}

int columnWithFormat(ProblemTab tab, ColumnFormat format) {
  const std::vector<ProblemColumn> &columns = columnsOfTab(tab);
  const auto found =
      std::find_if(columns.begin(), columns.end(), [format](const auto &c) { return c.format == format; });
  return found == columns.end() ? -1 : int(found - columns.begin());
}

QString columnText(const ProblemColumn &column, const Value &value) {
  if (value.isNull()) return {};
  switch (column.format) {
    case ColumnFormat::Size:
      if (value.toInteger() <= 0) return {};
      return sizeText(value.toInteger());
    case ColumnFormat::Number:
      return value.toInteger() > 0 ? numberOrText(value) : QString();
    case ColumnFormat::Mark:
      return value.toBool() ? QStringLiteral("✓") : QString();
    case ColumnFormat::NameType:
      return localizedMessage(value.toText() == keys::RKIsArtistMatched.text()
                                  ? QStringLiteral("NameType-Artist")
                                  : QStringLiteral("NameType-Album"));
    case ColumnFormat::Spellings:
      return plainText(styledTextOfValue(value));
    case ColumnFormat::Text:
    case ColumnFormat::RightText:
    case ColumnFormat::Stars:
    case ColumnFormat::Path:
      return numberOrText(value);
  }
  return {};
}

QString columnToolTip(const ProblemColumn &column) {
  const QString key =
      QString(column.titleKey).replace(QStringLiteral("Column-"), QStringLiteral("ColumnToolTip-"));
  const QString text = localizedMessage(key);
  return text == key ? QString() : text;
}
