#include "scanners/StyledText.h"

#include "values/Keys.h"

QString plainText(const StyledText &text) {
  QString plain;
  for (const StyledRun &run : text) plain += run.text;
  return plain;
}

const StyledRun *runAt(const StyledText &text, qsizetype index) {
  if (index < 0) return nullptr;
  for (const StyledRun &run : text) {
    if (index < run.text.size()) return &run;
    index -= run.text.size();
  }
  return nullptr;
}

Value valueOfStyledText(const StyledText &text) {
  const Array runs = Array::make();
  runs.reserve(qsizetype(text.size()));
  for (const StyledRun &run : text) {
    const Dictionary made = Dictionary::make();
    made.set(keys::runText, run.text);
    if (run.bold) made.set(keys::runIsBold, true);
    if (run.sourceIndex) made.set(keys::RKInconsistentSongSourceIndex, *run.sourceIndex);
    runs.append(made);
  }
  return runs;
}

StyledText styledTextOfValue(const Value &value) {
  StyledText text;
  for (const Value &member : value.toArray()) {
    const Dictionary &made = member.toDictionary();
    if (!made.value(keys::runText).isText()) return {};
    const Value &source = made.value(keys::RKInconsistentSongSourceIndex);
    text.push_back({made.value(keys::runText).toText(), made.value(keys::runIsBold).toBool(),
                    source.isNull() ? std::nullopt : std::optional(qint32(source.toInteger()))});
  }
  return text;
}
