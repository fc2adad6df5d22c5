#pragma once

#include "keeper/library/KeeperContext.h"
#include "keeper/script/ScriptObject.h"

/// A track as scripts see it: through a playlist, where it has an index of its own, or through the library.
/// Its properties are the library's keys (`TrackFields`), its location, and its lyrics, which live in the
/// file and nowhere else. Changes of descriptive properties stay in the library: only lyrics and artwork are
/// written into the user's file.
class TrackObject : public ScriptObject {
 public:
  /// `position` names the entry of an ordinary playlist and means nothing for the library's.
  TrackObject(KeeperContext &context_, TrackRow row_, PlaylistRow playlist_, qint64 position_ = 0)
      : context(context_), row(row_), list(playlist_), place(position_) {}

  TrackRow track() const { return row; }
  PlaylistRow playlist() const { return list; }
  qint64 position() const { return place; }
  /// Seen through the library, not as an entry of an ordinary playlist.
  bool isInLibrary() const;

  QString className() const override;
  bool isSame(const ScriptObject &other) const override;
  bool exists() const override;
  ScriptValue property(const QString &term) override;
  void setProperty(const QString &term, const ScriptValue &value) override;
  qsizetype elementCount(const QString &className) override;
  ScriptObjects elements(const QString &className) override;
  ScriptObjectPtr elementAt(const QString &className, qsizetype index) override;
  std::optional<ScriptObjects> elementsWhere(const QString &className, const QString &property,
                                             const ScriptValue &value) override;
  std::optional<ScriptListItems> column(const QString &className, const QString &property) override;

 private:
  void requireExistence() const;
  ScriptValue allProperties();
  /// The keys that a change of a property comes to.
  KeyChanges changesFor(const QString &term, const ScriptValue &value) const;
  /// Several at once: what the library keeps as one change, then what the file keeps.
  void setProperties(const ScriptValue &value);
  std::optional<qsizetype> index() const;

  KeeperContext &context;
  TrackRow row;
  PlaylistRow list;
  qint64 place;
};
