#pragma once

#include "keeper/script/ScriptObject.h"

/// What a command is about.
namespace commandThings {

/// The things behind the verb, lists flattened; the target of the `tell` block where nothing stands there.
/// Throws -1708 for anything else.
ScriptObjects of(const ScriptCommand &command);
[[noreturn]] void throwWrongClass(const QString &label);
/// The one thing of a class behind a label; null if the label was not given. -10010 for another thing.
template <class Object>
std::shared_ptr<Object> parameter(const ScriptCommand &command, const QString &label) {
  const ScriptValue *value = command.parameter(label);
  if (!value) return {};
  const auto object = value->is(ScriptValue::Type::Object)
                          ? std::dynamic_pointer_cast<Object>(value->object())
                          : std::shared_ptr<Object>();
  if (!object) throwWrongClass(label);
  return object;
}
/// One thing as itself, several as a list, none as no value.
ScriptValue reply(const ScriptObjects &objects);

}  // namespace commandThings
