#pragma once

#include "keeper/library/KeeperContext.h"
#include "keeper/library/PlayCommands.h"
#include "keeper/script/ScriptObject.h"

/// Music Keeper as scripts know it: the application at the top, over one library. Everything of the store and
/// of the player is reached through it. One thread; all things that it hands out end before it.
class KeeperApplication : public ScriptApplication {
 public:
  /// The store is open and outlives the application.
  explicit KeeperApplication(LibraryStore &store, KeeperHooks hooks = {});

  const ScriptDictionary &dictionary() const override;
  bool answersTo(const QString &nameOrIdentifier) const override;
  ScriptValue perform(const ScriptCommand &command) override;

  QString className() const override { return u"application"_qs; }
  bool isSame(const ScriptObject &other) const override { return &other == this; }
  bool exists() const override { return true; }
  ScriptValue property(const QString &term) override;
  void setProperty(const QString &term, const ScriptValue &value) override;
  /// The source, the playlists of the library, and the library's tracks.
  qsizetype elementCount(const QString &className) override;
  ScriptObjects elements(const QString &className) override;
  ScriptObjectPtr elementAt(const QString &className, qsizetype index) override;
  std::optional<ScriptObjects> elementsWhere(const QString &className, const QString &property,
                                             const ScriptValue &value) override;
  std::optional<ScriptListItems> column(const QString &className, const QString &property) override;

 private:
  ScriptValue playProperty(const QString &term);
  bool setPlayProperty(const QString &term, const ScriptValue &value);
  ScriptValue dispatch(const ScriptCommand &command);
  bool performPlaying(const ScriptCommand &command);
  ScriptValue save();
  /// What holds the elements of a class: the source, or the library's playlist.
  ScriptObjectPtr holderOf(const QString &className);

  KeeperContext context;
  PlayCommands playing;
  /// Kept for scripts that set it: the order here is always the library's.
  bool hasFixedIndexing = false;
};
