#pragma once

#include <memory>

#include "keeper/script/ScriptTree.h"

/// A script object: a script text that was loaded, or a `script … end script` in one. One thread.
class ScriptInstance {
 public:
  /// `script_` is part of `source_`.
  ScriptInstance(QString name_, ParsedScriptPtr source_, const scriptTree::Script &script_,
                 std::shared_ptr<ScriptInstance> enclosing_);
  ~ScriptInstance();

  /// Its own handler of a name; null if there is none.
  const scriptTree::Handler *handler(const QString &handlerName) const;
  /// Its own property of a name; null if there is none.
  ScriptValue *property(const QString &propertyName);
  void setProperty(const QString &propertyName, const ScriptValue &value);
  /// True if a `global` outside its handlers names it.
  bool declaresGlobal(const QString &variable) const { return globals.contains(variable); }
  void forgetProperties();

  const QString name;
  const ParsedScriptPtr source;
  const scriptTree::Script &script;
  /// The object in whose text this one stands; null for a whole text.
  const std::shared_ptr<ScriptInstance> enclosing;

 private:
  std::vector<std::pair<QString, ScriptValue>> properties;
  QStringList globals;
};

using ScriptInstancePtr = std::shared_ptr<ScriptInstance>;
