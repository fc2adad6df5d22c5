#include "keeper/script/ScriptValue.h"

ScriptValue::ScriptValue(ScriptObjectPtr value) {
  if (value) held = std::move(value);
}

ScriptValue ScriptValue::list(ScriptListItems items) {
  ScriptValue made;
  made.held = std::make_shared<ScriptListItems>(std::move(items));
  return made;
}

ScriptValue ScriptValue::record(ScriptRecordFields fields) {
  ScriptValue made;
  made.held = std::make_shared<ScriptRecordFields>(std::move(fields));
  return made;
}

const QString &ScriptValue::term() const {
  return is(Type::Constant) ? std::get<ScriptConstant>(held).term : std::get<ScriptClassName>(held).term;
}

const ScriptValue *ScriptValue::field(const QString &name) const {
  for (const auto &[fieldName, value] : fields()) {
    if (fieldName == name) return &value;
  }
  return nullptr;
}
