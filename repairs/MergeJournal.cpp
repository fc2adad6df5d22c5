#include "repairs/MergeJournal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "platform/AtomicFile.h"
#include "support/BMLog.h"

namespace {

/// Notes stay open only while the music application answers nothing; so many are never reached in earnest.
constexpr size_t kMostNotes = 1000;
/// No journal of ours is longer.
constexpr qint64 kLongestFile = 1 << 20;

const QString kVersion = QStringLiteral("version"), kNotes = QStringLiteral("notes"),
              kFrom = QStringLiteral("from"), kTo = QStringLiteral("to"), kCounts = QStringLiteral("counts");

bool isPersistentID(const QString &text) {
  return text.size() == 16 && std::all_of(text.begin(), text.end(), [](QChar c) {
           return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F');
         });
}

QJsonObject objectOf(const MergeJournal::Note &note) {
  const iTunesInterface::PlayedCounts &before = note.before;
  return {{kFrom, note.fromPID},
          {kTo, note.toPID},
          {kCounts, QJsonArray{before.fromPlays, before.fromSkips, before.toPlays, before.toSkips}}};
}

std::optional<MergeJournal::Note> noteOf(const QJsonObject &object) {
  const QJsonArray counts = object.value(kCounts).toArray();
  MergeJournal::Note note{object.value(kFrom).toString(), object.value(kTo).toString(), {}};
  note.before = {counts.at(0).toInteger(-1), counts.at(1).toInteger(-1), counts.at(2).toInteger(-1),
                 counts.at(3).toInteger(-1)};
  const bool isWhole = counts.size() == 4 && note.before.fromPlays >= 0 && note.before.fromSkips >= 0 &&
                       note.before.toPlays >= 0 && note.before.toSkips >= 0;
  // The texts go into a script.
  if (!isWhole || !isPersistentID(note.fromPID) || !isPersistentID(note.toPID)) return std::nullopt;
  return note;
}

}  // namespace

MergeJournal::MergeJournal(const QString &journalPath) : path(journalPath) {
  read();
}

QString MergeJournal::defaultPath() {
  return QFileInfo(logFilePath()).path() + QStringLiteral("/Merge Journal.json");
}

std::optional<QString> MergeJournal::mergePlayed(const QString &fromPID, const QString &toPID) {
  if (!settleNotesAbout({fromPID, toPID}))
    return QStringLiteral("error: an earlier merge of plays is not settled yet");
  const auto before = iTunesInterface::playedCountsOfTracksWithPIDs(fromPID, toPID);
  const bool movesCounts = before && (before->fromPlays > 0 || before->fromSkips > 0);
  if (movesCounts) {
    if (notes.size() >= kMostNotes) notes.erase(notes.begin());
    notes.push_back({fromPID, toPID, *before});
    if (!write(true)) {
      notes.pop_back();
      return QStringLiteral("error: the plays are not merged, as no note of them can be written");
    }
  }
  const std::optional<QString> problem =
      iTunesInterface::mergePlayedFromTrackWithPIDToTrackWithPID(fromPID, toPID);
  if (problem || !movesCounts) return problem;
  // An application that is gone answers nothing, as one does that has done its work.
  const auto after = iTunesInterface::playedCountsOfTracksWithPIDs(fromPID, toPID);
  const bool hasMoved = after && (!before->fromPlays || after->fromPlays < before->fromPlays) &&
                        (!before->fromSkips || after->fromSkips < before->fromSkips);
  if (!hasMoved) return QStringLiteral("error: nothing tells whether the plays have gone over");
  remove(fromPID);
  return std::nullopt;
}

std::optional<QString> MergeJournal::mergeWhatIsOpen(const QString &fromPID) {
  for (const Note &note : notes) {
    if (note.fromPID == fromPID) return mergePlayed(fromPID, QString(note.toPID));
  }
  return std::nullopt;
}

void MergeJournal::settle() {
  QStringList pids;
  for (const Note &note : notes) pids.append(note.fromPID);
  if (!settleNotesAbout(pids)) BMLog("the merge journal has notes that cannot be settled yet");
}

bool MergeJournal::settleNotesAbout(const QStringList &pids) {
  bool all = true;
  for (const Note &note : std::vector<Note>(notes)) {
    if (!pids.contains(note.fromPID) && !pids.contains(note.toPID)) continue;
    const std::optional<QString> problem =
        iTunesInterface::settlePlayedOfTracksWithPIDs(note.fromPID, note.toPID, note.before);
    if (problem) {
      BMLog("settling the plays of %@ and %@: %@", note.fromPID, note.toPID, *problem);
      all = false;
    } else {
      remove(note.fromPID);
    }
  }
  return all;
}

void MergeJournal::read() {
  QFile file(path);
  if (!file.exists()) return;
  const bool isOpen = file.size() <= kLongestFile && file.open(QIODevice::ReadOnly);
  const QJsonObject root = isOpen ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
  if (root.value(kVersion).toInt() != 1) {
    BMLog("the merge journal cannot be read, and begins anew: %@", path);
    return;
  }
  for (const QJsonValue &value : root.value(kNotes).toArray()) {
    const std::optional<Note> note = noteOf(value.toObject());
    if (note && notes.size() < kMostNotes) notes.push_back(*note);
  }
}

bool MergeJournal::write(bool durable) {
  QJsonArray list;
  for (const Note &note : notes) list.append(objectOf(note));
  const QByteArray bytes =
      QJsonDocument(QJsonObject{{kVersion, 1}, {kNotes, list}}).toJson(QJsonDocument::Compact);
  QString error;
  QDir().mkpath(QFileInfo(path).path());
  if (writeFileAtomically(path, bytes, durable, &error)) return true;
  BMLog("the merge journal cannot be written: %@", error);
  return false;
}

void MergeJournal::remove(const QString &fromPID) {
  const size_t count = notes.size();
  std::erase_if(notes, [&](const Note &note) { return note.fromPID == fromPID; });
  // A note too many does no harm, so the disk may take its time.
  if (notes.size() != count && !write(false)) BMLog("a note stays in the merge journal: %@", path);
}
