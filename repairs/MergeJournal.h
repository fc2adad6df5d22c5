#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "bridge/TrackScripts.h"
#include "repairs/JournalFile.h"
#include "values/Date.h"

/// Sees to it that plays and skips go from one track to another exactly once, whatever is killed on the way.
/// The merging script moves them in steps; a note of both tracks' counts is on the disk before it begins, and
/// goes when it has ended. A note that is found later, as the script or this process was broken off, is
/// settled first: what the target has got of it leaves the source. So each further merge moves what is left,
/// and the plays of the time in between. One thread.
class MergeJournal {
 public:
  explicit MergeJournal(const QString &path = defaultPath()) : file(path) {}
  /// The same for every program of the application: what one was killed over, the other settles.
  static QString defaultPath();

  /// Takes the journal, which one merge of the user's has at a time, until `close` or the end of the process,
  /// and reads its notes. Nothing, or why there can be no merge of plays now: a text for the user. What is
  /// no note, or torn, counts as none, with a line in the log.
  [[nodiscard]] std::optional<QString> open();
  /// Gives it back. Notes that are open stay for the next.
  void close();

  /// Settles what is open about the two, then merges: nothing, or a message for the user that begins with
  /// "error:". Where the counts are not told, or no note can be taken of them, nothing is merged.
  std::optional<QString> mergePlayed(const QString &fromPID, const QString &toPID);
  /// Settles what earlier runs have left; what cannot be settled yet stays noted.
  void settle();

  struct Note {
    QString fromPID, toPID;
    iTunesInterface::PlayedCounts before;
    Date taken;
  };
  std::vector<Note> openNotes() const;

 private:
  /// False if a note about one of the tracks stays open.
  bool settleNotesAbout(const QStringList &pids);
  /// Nothing, or why the note stays.
  std::optional<QString> settleSlot(size_t slot);
  std::optional<QString> mergeWithNote(const Note &note);
  std::optional<size_t> freeSlot();

  JournalFile file;
  /// By their slots in the file.
  std::vector<std::optional<Note>> notes;
};
