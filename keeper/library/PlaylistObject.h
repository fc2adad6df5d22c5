#pragma once

#include "keeper/library/KeeperContext.h"
#include "keeper/script/ScriptObject.h"

/// A playlist as scripts see it: the library's own, a folder, or one of the user's, smart ones included. Its
/// elements are its tracks; those of an ordinary playlist are entries with an index of their own.
class PlaylistObject : public ScriptObject {
 public:
  PlaylistObject(KeeperContext &context_, PlaylistRow row_) : context(context_), row(row_) {}

  /// The class of a playlist, and whether a class has it among its members: "user playlist" has folders and
  /// smart ones as well. Not known are the classes of discs, devices and radio: nothing is of them.
  static QString classOf(const PlaylistInfo &info);
  static bool isOf(const PlaylistInfo &info, const QString &className);

  PlaylistRow playlist() const { return row; }
  /// What the store knows of it; throws -1728 if it is gone.
  const PlaylistInfo &info() const;
  /// True if a script may change its entries: neither the library's nor a folder nor smart.
  bool takesTracks() const;

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
  ScriptValue ownProperty(const QString &term);
  /// All of a record or none.
  void setProperties(const ScriptValue &value);
  ScriptValue sum(Key key);

  KeeperContext &context;
  PlaylistRow row;
};
