#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "bridge/TrackScripts.h"

/// Sees to it that plays and skips go from one track to another exactly once, whatever is killed on the way.
/// The merging script moves them in steps; a note of both tracks' counts is on the disk before it begins, and
/// goes when it has ended. A note that is found later, as the script or this process was broken off, is
/// settled first: what the target has got of it leaves the source. So each further merge moves what is left,
/// and the plays of the time in between. One thread.
class MergeJournal {
 public:
  /// The notes of a file; what is no journal, or torn, counts as none, with a line in the log.
  explicit MergeJournal(const QString &path = defaultPath());
  /// In the application's own data folder.
  static QString defaultPath();

  /// Settles what is open, then merges: nothing, or a message. Without its note nothing is merged twice
  /// either: then the merge is left out, with a message.
  std::optional<QString> mergePlayed(const QString &fromPID, const QString &toPID);
  /// The same for a merge that had failed and whose source is about to leave the library.
  std::optional<QString> mergeWhatIsOpen(const QString &fromPID);
  /// Settles what earlier runs have left; what cannot be settled yet stays noted.
  void settle();

  struct Note {
    QString fromPID, toPID;
    iTunesInterface::PlayedCounts before;
  };
  const std::vector<Note> &openNotes() const { return notes; }

 private:
  /// False if a note about one of the tracks stays open.
  bool settleNotesAbout(const QStringList &pids);
  void read();
  bool write(bool durable);
  void remove(const QString &fromPID);

  const QString path;
  std::vector<Note> notes;
};
