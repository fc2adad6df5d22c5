#pragma once

#include "keeper/library/KeeperContext.h"
#include "keeper/script/ScriptObject.h"

/// The one source there is: the library. Its elements are the playlists.
class SourceObject : public ScriptObject {
 public:
  explicit SourceObject(KeeperContext &context_) : context(context_) {}

  QString className() const override { return u"source"_qs; }
  bool isSame(const ScriptObject &other) const override;
  bool exists() const override { return true; }
  ScriptValue property(const QString &term) override;
  void setProperty(const QString &term, const ScriptValue &value) override;
  qsizetype elementCount(const QString &className) override;
  ScriptObjects elements(const QString &className) override;
  ScriptObjectPtr elementAt(const QString &className, qsizetype index) override;
  std::optional<ScriptObjects> elementsWhere(const QString &className, const QString &property,
                                             const ScriptValue &value) override;
  std::optional<ScriptListItems> column(const QString &className, const QString &property) override;

 private:
  KeeperContext &context;
};
