#include "ctl/MarksReport.h"

#include <limits>

#include "ctl/RowText.h"
#include "values/Keys.h"

namespace {

QString infoReason(std::optional<qint32> criterion) {
  static const char *const names[] = {"most complete", "most played", "played last", "oldest year",
                                      "newest year",   "added first", "added last",  "rated highest"};
  if (!criterion) return QStringLiteral("last row, as no criterion left a single one");
  const bool isKnown = *criterion >= 0 && *criterion < qint32(std::size(names));
  return QString::fromLatin1(isKnown ? names[*criterion] : "none");
}

QString audioReason(qint32 criterion) {
  static const char *const names[] = {"highest quality",
                                      "lowest quality",
                                      "best rated, then bit rate",
                                      "longest, then bit rate",
                                      "nearest to the wanted bit rate",
                                      "added first",
                                      "added last"};
  const bool isKnown = criterion >= 0 && criterion < qint32(std::size(names));
  return QString::fromLatin1(names[isKnown ? criterion : 0]);
}

QString numbersOf(qint32 criterion, qint32 score) {
  // What the best of rows scores whose files are all gone or mere fragments.
  const bool isUnusable = score == -std::numeric_limits<qint32>::max();
  const QString worth = isUnusable ? QStringLiteral("no usable file") : QStringLiteral("score %1").arg(score);
  return QStringLiteral(" (criterion %1, %2)").arg(criterion).arg(worth);
}

}  // namespace

MarksReport::Winner MarksReport::infoWinner(const GroupMarks &marks) const {
  return {marks.infoRow, marks.infoCriterion, infoReason(marks.infoCriterion), marks.infoScore};
}

MarksReport::Winner MarksReport::audioWinner(const GroupMarks &marks) const {
  return {marks.audioRow, audioCriterion, audioReason(audioCriterion), marks.audioScore};
}

Dictionary MarksReport::rowOf(const Automark::Choice &choice, qsizetype place) const {
  return rows.at(choice.firstRow + place).toDictionary();
}

void MarksReport::printJson(Terminal &terminal) const {
  JsonWriter json(terminal.out);
  json.beginObject();
  json.key(u"groups");
  json.beginArray();
  for (const Automark::Choice &choice : choices) {
    json.beginObject();
    json.member(u"group", rowOf(choice, 0).value(keys::DupeGroup));
    json.key(u"rows");
    json.beginArray();
    for (qsizetype place = 0; place < choice.rowCount; ++place)
      json.value(rowOf(choice, place).value(keys::PersistentID));
    json.endArray();
    json.key(u"info");
    writeWinner(choice, infoWinner(choice.marks), &json);
    json.key(u"audio");
    writeWinner(choice, audioWinner(choice.marks), &json);
    json.endObject();
  }
  json.endArray();
  json.endObject();
  json.endLine();
}

void MarksReport::writeWinner(const Automark::Choice &choice, const Winner &winner, JsonWriter *json) const {
  json->beginObject();
  json->member(u"pid", rowOf(choice, winner.row).value(keys::PersistentID));
  json->member(u"row", qint64(winner.row));
  json->member(u"criterion", winner.criterion ? Value(*winner.criterion) : Value());
  json->member(u"reason", winner.reason);
  json->member(u"score", winner.criterion ? Value(winner.score) : Value());
  json->endObject();
}

void MarksReport::print(Terminal &terminal) const {
  for (const Automark::Choice &choice : choices) {
    terminal.print(rowText::titleOf(rowOf(choice, 0)));
    printWinner(choice, "information", infoWinner(choice.marks), terminal);
    printWinner(choice, "audio", audioWinner(choice.marks), terminal);
    terminal.print({});
  }
  terminal.print(rowText::counted(qsizetype(choices.size()), "group", "groups") +
                 QStringLiteral(" of duplicates"));
}

void MarksReport::printWinner(const Automark::Choice &choice, const char *what, const Winner &winner,
                              Terminal &terminal) const {
  const QString number = winner.criterion ? numbersOf(*winner.criterion, winner.score) : QString();
  terminal.print(QStringLiteral("  %1: %2%3").arg(QString::fromLatin1(what), winner.reason, number));
  terminal.print(QStringLiteral("  ") + rowText::lineOf(rowOf(choice, winner.row)));
}
