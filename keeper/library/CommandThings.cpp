#include "keeper/library/CommandThings.h"

#include "keeper/library/Refusal.h"

namespace {

void collect(const QString &verb, const ScriptValue &value, ScriptObjects &objects) {
  if (value.is(ScriptValue::Type::Object)) {
    objects.push_back(value.object());
  } else if (value.is(ScriptValue::Type::List)) {
    for (const ScriptValue &item : value.items()) collect(verb, item, objects);
  } else {
    throw refusal::notUnderstood(verb);
  }
}

}  // namespace

namespace commandThings {

ScriptObjects of(const ScriptCommand &command) {
  ScriptObjects objects;
  if (!command.direct.is(ScriptValue::Type::NoValue)) {
    collect(command.verb, command.direct, objects);
  } else if (command.target) {
    objects.push_back(command.target);
  }
  return objects;
}

void throwWrongClass(const QString &label) {
  throw refusal::error(scriptErrors::kWrongClass,
                       u"What stands behind \"%1\" is of a wrong class."_qs.arg(label));
}

ScriptValue reply(const ScriptObjects &objects) {
  if (objects.empty()) return {};
  if (objects.size() == 1) return objects.front();
  return ScriptValue::list(ScriptListItems(objects.begin(), objects.end()));
}

}  // namespace commandThings
