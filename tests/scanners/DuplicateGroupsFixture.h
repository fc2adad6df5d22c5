#pragma once

#include "scanners/DuplicateGroups.h"
#include "tests/fixtures/IdleCommands.h"
#include "tests/scanners/ScanFixture.h"

/// A list of duplicates written as text: "A1 B1 C2" are three rows with the persistent IDs A, B and C in the
/// groups 1, 1 and 2; "-" stands for no ID.
class DuplicateGroupsTest : public ScanFixture, public IdleCommands {
 protected:
  DuplicateGroupsTest() { state.commands = this; }

  const Array &list() const { return state.lists.mDuplicateSongDicts; }
  const Dictionary &row(qsizetype place) const { return list().at(place).toDictionary(); }

  Dictionary addRow(const QString &pid, qint64 group) {
    const Dictionary made = Dictionary::make();
    if (!pid.isEmpty()) made.set(keys::PersistentID, pid);
    made.set(keys::DupeGroup, group);
    list().append(made);
    return made;
  }
  void setRows(const char *text) {
    state.lists.mDuplicateSongDicts = Array::make();
    for (const QString &word : QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts)) {
      addRow(word.startsWith(u'-') ? QString() : word.left(1), word.mid(1).toLongLong());
    }
  }
  static QString pidOf(const Dictionary &row) {
    const QString &pid = row.value(keys::PersistentID).toText();
    return pid.isEmpty() ? QStringLiteral("-") : pid;
  }
  static QString described(const Array &rows) {
    QStringList words;
    for (const Value &value : rows) {
      const Dictionary &row = value.toDictionary();
      words.append(pidOf(row) + QString::number(row.value(keys::DupeGroup).toInteger()));
    }
    return words.join(u' ');
  }

  void select(const char *pids) {
    std::vector<Dictionary> rows;
    for (const Value &value : list()) {
      if (QString::fromUtf8(pids).contains(pidOf(value.toDictionary()))) rows.push_back(value.toDictionary());
    }
    view.selectRows(ProblemTab::Duplicates, rows);
  }
  QString selection() const {
    QString pids;
    for (const Dictionary &row : view.selectedRows(ProblemTab::Duplicates)) pids += pidOf(row);
    return pids;
  }

  QString stripes() const {
    QString text;
    for (const Value &value : list()) {
      const Value &stripe = value.toDictionary().value(keys::UIStripe);
      text += stripe.isNull() ? u'?' : (stripe.toBool() ? u'#' : u'-');
    }
    return text;
  }
  /// From the first row on: "ia" both marks, "i-" and "-a" one, "--" none.
  void setMarks(const char *text) {
    const QStringList words = QString::fromUtf8(text).split(u' ');
    for (qsizetype place = 0; place < words.size(); ++place) {
      if (words[place][0] == u'i') row(place).set(keys::markInfo, true);
      if (words[place][1] == u'a') row(place).set(keys::markAudio, true);
    }
  }
  QString marks() const {
    QStringList words;
    for (const Value &value : list()) {
      const Dictionary &row = value.toDictionary();
      words.append(QString(row.value(keys::markInfo).toBool() ? u'i' : u'-') +
                   QString(row.value(keys::markAudio).toBool() ? u'a' : u'-'));
    }
    return words.join(u' ');
  }

  DuplicateGroups groups{state};
};
