#pragma once

#include "keeper/library/KeeperContext.h"
#include "keeper/script/ScriptObject.h"

/// A picture in the file of a track, by its place there. Reading it reads the file, changing it writes the
/// file's tag; a file that cannot be written gives -54.
class ArtworkObject : public ScriptObject {
 public:
  ArtworkObject(KeeperContext &context_, TrackRow track_, qsizetype index_)
      : context(context_), track(track_), index(index_) {}

  /// How many pictures the file of a track has; what the library knows where there is no file.
  static qsizetype countOf(KeeperContext &context, TrackRow track);
  /// Takes the picture out of the file.
  void remove();

  QString className() const override { return u"artwork"_qs; }
  bool isSame(const ScriptObject &other) const override;
  bool exists() const override;
  ScriptValue property(const QString &term) override;
  /// The bytes may be set ("data", "raw data"); a place behind the last picture adds one.
  void setProperty(const QString &term, const ScriptValue &value) override;
  qsizetype elementCount(const QString &className) override;
  ScriptObjects elements(const QString &className) override;
  ScriptObjectPtr elementAt(const QString &className, qsizetype index) override;
  std::optional<ScriptObjects> elementsWhere(const QString &className, const QString &property,
                                             const ScriptValue &value) override;
  std::optional<ScriptListItems> column(const QString &className, const QString &property) override;

 private:
  KeeperContext &context;
  TrackRow track;
  qsizetype index;
};
