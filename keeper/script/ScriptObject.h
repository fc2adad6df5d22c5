#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "keeper/script/ScriptDictionary.h"
#include "keeper/script/ScriptError.h"
#include "keeper/script/ScriptValue.h"

using ScriptObjects = std::vector<ScriptObjectPtr>;

/// A command on its way to an application. References in it are resolved: things are objects or lists of
/// objects.
struct ScriptCommand {
  /// The dictionary's term: "duplicate".
  QString verb;
  /// What stands behind the verb; no value if nothing does, then the target of the `tell` block counts.
  ScriptValue direct;
  ScriptObjectPtr target;
  /// By the term of their label: "to", "new", "with properties".
  std::vector<std::pair<QString, ScriptValue>> parameters;

  /// The parameter of a label; null if it was not given.
  const ScriptValue *parameter(const QString &label) const;
};

/// A thing of an application that scripts read, change and walk: its properties, the things that it holds,
/// and the commands it obeys. Operations throw `ScriptError`; an object whose thing is gone throws -1728. One
/// thread.
class ScriptObject {
 public:
  virtual ~ScriptObject() = default;

  /// The term of its own class: "file track".
  virtual QString className() const = 0;
  /// True if both stand for one thing.
  virtual bool isSame(const ScriptObject &other) const = 0;
  /// False once the thing is gone.
  virtual bool exists() const = 0;

  /// The value of a property; -1728 if it has none of that term.
  virtual ScriptValue property(const QString &term) = 0;
  /// Changes a property: -10003 if it can only be read, -10006 if the value does not fit.
  virtual void setProperty(const QString &term, const ScriptValue &value) = 0;

  /// How many things of a class it holds, without making them; -1728 if it holds no such class.
  virtual qsizetype elementCount(const QString &className) = 0;
  /// All of them, in order.
  virtual ScriptObjects elements(const QString &className) = 0;
  /// The one at an index from 0; null if it is out of range.
  virtual ScriptObjectPtr elementAt(const QString &className, qsizetype index) = 0;
  /// Those whose property equals the value, found without a walk: texts without regard to case. Nothing if
  /// there is no such short way; the caller then walks.
  virtual std::optional<ScriptObjects> elementsWhere(const QString &className, const QString &property,
                                                     const ScriptValue &value) = 0;
  /// One property of all things of a class, in order, without making the things; nothing if there is no short
  /// way.
  virtual std::optional<ScriptListItems> column(const QString &className, const QString &property) = 0;
};

/// The application at the top: it holds the rest and obeys the commands.
class ScriptApplication : public ScriptObject {
 public:
  /// The words of its `tell` blocks. Lives as long as the application.
  virtual const ScriptDictionary &dictionary() const = 0;
  /// True if a script means this application by that name, or by that identifier.
  virtual bool answersTo(const QString &nameOrIdentifier) const = 0;
  /// Obeys a command and answers its reply; no value where it has none. -1708 for a command it does not know
  /// or a thing that cannot take it.
  virtual ScriptValue perform(const ScriptCommand &command) = 0;
};
