#pragma once

#include <QSet>

#include "app/state/MergeState.h"
#include "repairs/MergePlan.h"
#include "repairs/MergeRooms.h"

/// The last step of a group: what becomes of the rows that are not kept, their files and their tracks. Before
/// each step that cannot be undone it looks at the world again: the kept file is there, the file to go is not
/// the kept one nor that of another track, and the plays have gone over. Where that is not so, row, file and
/// track stay and the report tells. The run's thread.
class RowDisposal {
 public:
  /// `keptPath`: where the kept file is now; `openPlays`: the tracks whose plays have not gone over yet.
  RowDisposal(const MergeRooms &theRooms, const GroupPlan &groupPlan, QString keptPath,
              QSet<QString> openPlays);

  /// True if rows may be disposed of at all: the kept track is in the library still. Asked once.
  [[nodiscard]] bool mayBegin() const;
  /// True if the row is done with and leaves the list. `told` says what became of it.
  bool disposeOf(const GroupPlan::Unkept &unkept, MergedGroup::Unkept &told);

 private:
  using Unkept = GroupPlan::Unkept;

  void collect(const Unkept &unkept) const;
  bool disposeOfTrack(const Unkept &unkept, MergedGroup::Unkept &told);
  /// True if the application answers, and has no such track: somebody else removed it, or an earlier run
  /// that was not told so.
  bool hasLeftLibrary(const QString &pid) const;
  bool playsHaveGoneOver(const Unkept &unkept);
  /// True if the track may go now.
  bool takeFileAway(const Unkept &unkept, MergedGroup::Unkept &told) const;
  bool copyToFolder(const Unkept &unkept, MergedGroup::Unkept &told) const;
  /// `isGone`: it has left already.
  bool removeTrack(const Unkept &unkept, bool isGone, MergedGroup::Unkept &told) const;
  /// Behind the removal: the file that was copied goes.
  void deleteCopied(const Unkept &unkept, const QString &copy) const;
  bool keptFileIsThere() const;

  const MergeRooms &rooms;
  const GroupPlan &plan;
  const QString keptPath, keptPID;
  QSet<QString> openPlays;
};
