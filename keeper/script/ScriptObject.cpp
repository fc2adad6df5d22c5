#include "keeper/script/ScriptObject.h"

const ScriptValue *ScriptCommand::parameter(const QString &label) const {
  for (const auto &[name, value] : parameters) {
    if (name == label) return &value;
  }
  return nullptr;
}
