#include "keeper/script/ScriptValue.h"

#include <algorithm>

ScriptValue::ScriptValue(ScriptObjectPtr value) {
  if (value) held = std::move(value);
}

ScriptValue ScriptValue::list(ScriptListItems items) {
  ScriptValue made;
  made.held = ListPtr(new ScriptListItems(std::move(items)), [](ScriptListItems *list) {
    release(std::move(*list));
    delete list;
  });
  return made;
}

ScriptValue ScriptValue::record(ScriptRecordFields fields) {
  ScriptValue made;
  made.held = RecordPtr(new ScriptRecordFields(std::move(fields)), [](ScriptRecordFields *record) {
    ScriptListItems values;
    for (auto &field : *record) values.push_back(std::move(field.second));
    release(std::move(values));
    delete record;
  });
  return made;
}

void ScriptValue::release(ScriptListItems values) {
  thread_local std::vector<ScriptListItems> waiting;
  thread_local bool releasing = false;
  const auto holdsMore = [](const ScriptValue &value) { return value.type() >= Type::List; };
  if (std::none_of(values.begin(), values.end(), holdsMore)) return;
  waiting.push_back(std::move(values));
  if (releasing) return;
  releasing = true;
  while (!waiting.empty()) {
    ScriptListItems next = std::move(waiting.back());
    waiting.pop_back();
    next.clear();
  }
  releasing = false;
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
