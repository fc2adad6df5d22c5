#include "ctl/RowText.h"

#include "ctl/Terminal.h"
#include "values/Keys.h"

namespace {

QString timeOf(const Dictionary &row) {
  const qint64 seconds = row.value(keys::TotalTime).toInteger() / 1000;
  return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0'));
}

QString sizeOf(const Dictionary &row) {
  constexpr double kKilobyte = 1.0e3, kMegabyte = 1.0e6;
  const double bytes = row.value(keys::Size).toDouble();
  return bytes < kMegabyte ? QStringLiteral("%1 kB").arg(bytes / kKilobyte, 0, 'f', 0)
                           : QStringLiteral("%1 MB").arg(bytes / kMegabyte, 0, 'f', 1);
}

}  // namespace

namespace rowText {

QString textOf(const Dictionary &row, Key key, const char *without) {
  const QString &text = row.value(key).toText();
  return text.isEmpty() ? QString::fromLatin1(without) : printable(text);
}

QString titleOf(const Dictionary &row) {
  return textOf(row, keys::Artist, "(no artist)") + QStringLiteral(" - ") +
         textOf(row, keys::Name, "(no name)");
}

QString lineOf(const Dictionary &row) {
  return QStringLiteral("%1  %2  %3  %4  %5")
      .arg(timeOf(row).rightJustified(6), textOf(row, keys::Kind, "(no kind)").leftJustified(20),
           QStringLiteral("%1 kbps").arg(row.value(keys::BitRate).toInteger()).rightJustified(9),
           sizeOf(row).rightJustified(9), textOf(row, keys::Path, "(no file)"));
}

QString counted(qsizetype count, const char *one, const char *many) {
  return QStringLiteral("%1 %2").arg(count).arg(QString::fromLatin1(count == 1 ? one : many));
}

}  // namespace rowText
