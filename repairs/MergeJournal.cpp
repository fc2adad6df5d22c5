#include "repairs/MergeJournal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "bridge/LocalizedMessage.h"
#include "platform/Platform.h"
#include "support/BMLog.h"
#include "values/PersistentID.h"

namespace {

const QString kFrom = QStringLiteral("from"), kTo = QStringLiteral("to"), kCounts = QStringLiteral("counts"),
              kTaken = QStringLiteral("taken");

QByteArray lineOf(const MergeJournal::Note &note) {
  const iTunesInterface::PlayedCounts &before = note.before;
  const QJsonObject object{
      {kFrom, note.fromPID},
      {kTo, note.toPID},
      {kTaken, qint64(note.taken.toUnix())},
      {kCounts, QJsonArray{before.fromPlays, before.fromSkips, before.toPlays, before.toSkips}}};
  return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<MergeJournal::Note> noteOf(const QByteArray &line) {
  const QJsonObject object = QJsonDocument::fromJson(line).object();
  const QJsonArray counts = object.value(kCounts).toArray();
  MergeJournal::Note note{object.value(kFrom).toString(), object.value(kTo).toString(), {}, {}};
  note.before = {counts.at(0).toInteger(-1), counts.at(1).toInteger(-1), counts.at(2).toInteger(-1),
                 counts.at(3).toInteger(-1)};
  note.taken = Date::fromUnix(double(object.value(kTaken).toInteger()));
  const bool isWhole = counts.size() == 4 && note.before.fromPlays >= 0 && note.before.fromSkips >= 0 &&
                       note.before.toPlays >= 0 && note.before.toSkips >= 0;
  // The texts go into a script.
  if (!isWhole || !isPersistentID(note.fromPID) || !isPersistentID(note.toPID)) return std::nullopt;
  return note;
}

QString errorOf(const QString &key, const QString &detail = {}) {
  return QStringLiteral("error: ") + localizedMessage(key, detail);
}

qint64 secondsSince(Date date) {
  return qMax(qint64(0), qint64(platform().clock->now().seconds - date.seconds));
}

}  // namespace

QString MergeJournal::defaultPath() {
  const Folders &folders = platform().folders;
  const QString data = folders.applicationSupport.isEmpty()
                           ? folders.home + QStringLiteral("/Library/Application Support")
                           : folders.applicationSupport;
  return data + u'/' + platform().bundle.identifier + QStringLiteral("/Merge Journal");
}

std::optional<QString> MergeJournal::open() {
  close();
  QString error;
  const JournalFile::Opening opening = file.open(&error);
  if (opening == JournalFile::Opening::HeldByAnother)
    return localizedMessage(QStringLiteral("MergeJournalIsHeld"));
  if (opening == JournalFile::Opening::Failed)
    return localizedMessage(QStringLiteral("MergeJournalUnusable"), error);
  for (const QByteArray &line : file.lines()) {
    notes.push_back(noteOf(line));
    if (!line.isEmpty() && !notes.back()) BMLog("the merge journal has a line that is no note");
  }
  return std::nullopt;
}

void MergeJournal::close() {
  file.close();
  notes.clear();
}

std::vector<MergeJournal::Note> MergeJournal::openNotes() const {
  std::vector<Note> open;
  for (const std::optional<Note> &note : notes) {
    if (note) open.push_back(*note);
  }
  return open;
}

std::optional<QString> MergeJournal::mergePlayed(const QString &fromPID, const QString &toPID) {
  if (!settleNotesAbout({fromPID, toPID})) return errorOf(QStringLiteral("MergePlaysNotSettled"));
  QString problem;
  const auto before = iTunesInterface::playedCountsOfTracksWithPIDs(fromPID, toPID, &problem);
  if (!before) return errorOf(QStringLiteral("MergePlaysNotTold"), problem);
  const bool movesCounts = before->fromPlays > 0 || before->fromSkips > 0;
  if (movesCounts) return mergeWithNote({fromPID, toPID, *before, platform().clock->now()});
  return iTunesInterface::mergePlayedFromTrackWithPIDToTrackWithPID(fromPID, toPID);
}

std::optional<QString> MergeJournal::mergeWithNote(const Note &note) {
  const std::optional<size_t> slot = freeSlot();
  QString problem = QStringLiteral("no slot is free");
  if (!slot || !file.put(qsizetype(*slot), lineOf(note), &problem)) {
    // Half of it may be there; the tracks are as it says.
    if (slot) file.putSoon(qsizetype(*slot), {});
    return errorOf(QStringLiteral("MergePlaysNotNoted"), problem);
  }
  notes[*slot] = note;
  const std::optional<QString> failure =
      iTunesInterface::mergePlayedFromTrackWithPIDToTrackWithPID(note.fromPID, note.toPID);
  if (failure) return failure;
  // A note too many does no harm, so the disk may take its time.
  notes[*slot].reset();
  file.putSoon(qsizetype(*slot), {});
  return std::nullopt;
}

std::optional<size_t> MergeJournal::freeSlot() {
  const auto find = [this] { return std::find(notes.begin(), notes.end(), std::nullopt); };
  // The tracks of most that stay open are gone by now.
  if (find() == notes.end()) settle();
  const auto found = find();
  return found == notes.end() ? std::nullopt : std::optional(size_t(found - notes.begin()));
}

void MergeJournal::settle() {
  bool all = true, isAnswered = true;
  // An application that does not answer is not asked for each of them.
  for (size_t slot = 0; slot < notes.size() && isAnswered; ++slot) {
    const std::optional<QString> problem = settleSlot(slot);
    all &= !problem;
    isAnswered = !problem || !iTunesInterface::mayHaveBeenDone(*problem);
  }
  if (!all) BMLog("the merge journal has notes that cannot be settled yet");
}

bool MergeJournal::settleNotesAbout(const QStringList &pids) {
  bool all = true;
  for (size_t slot = 0; slot < notes.size(); ++slot) {
    const std::optional<Note> &note = notes[slot];
    if (note && (pids.contains(note->fromPID) || pids.contains(note->toPID))) all &= !settleSlot(slot);
  }
  return all;
}

std::optional<QString> MergeJournal::settleSlot(size_t slot) {
  if (!notes[slot]) return std::nullopt;
  const Note &note = *notes[slot];
  const std::optional<QString> problem = iTunesInterface::settlePlayedOfTracksWithPIDs(
      note.fromPID, note.toPID, note.before, secondsSince(note.taken));
  if (problem) {
    BMLog("settling the plays of %@ and %@: %@", note.fromPID, note.toPID, *problem);
    return problem;
  }
  notes[slot].reset();
  file.putSoon(qsizetype(slot), {});
  return std::nullopt;
}
