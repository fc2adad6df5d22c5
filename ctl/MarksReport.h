#pragma once

#include "ctl/JsonWriter.h"
#include "ctl/Terminal.h"
#include "repairs/Automark.h"

/// Which rows of each group of duplicates were chosen, and by which criterion and score, told as JSON or for
/// reading. The rows are read when it is printed.
class MarksReport {
 public:
  /// `choices` outlives the report; `rules` are those by which they were made.
  MarksReport(const Array &duplicateRows, const std::vector<Automark::Choice> &groupChoices,
              const AutomarkRules &rules)
      : rows(duplicateRows), choices(groupChoices), audioCriterion(rules.preferAudioData15) {}

  bool hasGroups() const { return !choices.empty(); }

  /// {"groups": [{"group", "rows": [PID...], "info": WINNER, "audio": WINNER}...]}, a WINNER being {"pid",
  /// "row": its place in the group, "criterion": the number, "reason": its name, "score"}. Criterion and
  /// score are null where the last row was taken because no criterion left a single one.
  void printJson(Terminal &terminal) const;
  void print(Terminal &terminal) const;

 private:
  /// A chosen row and why.
  struct Winner {
    qsizetype row = 0;
    std::optional<qint32> criterion;
    QString reason;
    qint32 score = 0;
  };
  Winner infoWinner(const GroupMarks &marks) const;
  Winner audioWinner(const GroupMarks &marks) const;
  Dictionary rowOf(const Automark::Choice &choice, qsizetype place) const;
  void writeWinner(const Automark::Choice &choice, const Winner &winner, JsonWriter *json) const;
  void printWinner(const Automark::Choice &choice, const char *what, const Winner &winner,
                   Terminal &terminal) const;

  const Array rows;
  const std::vector<Automark::Choice> &choices;
  const qint32 audioCriterion;
};
