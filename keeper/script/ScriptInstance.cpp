#include "keeper/script/ScriptInstance.h"

ScriptInstance::ScriptInstance(QString name_, ParsedScriptPtr source_, const scriptTree::Script &script_,
                               std::shared_ptr<ScriptInstance> enclosing_)
    : name(std::move(name_)), source(std::move(source_)), script(script_), enclosing(std::move(enclosing_)) {
  for (const scriptTree::Statement &statement : script.statements) {
    const auto *declaration = std::get_if<scriptTree::Declare>(&statement.form);
    if (declaration && declaration->isGlobal) globals += declaration->names;
  }
}

ScriptInstance::~ScriptInstance() {
  forgetProperties();
}

void ScriptInstance::forgetProperties() {
  ScriptListItems values;
  for (auto &property_ : properties) values.push_back(std::move(property_.second));
  properties.clear();
  ScriptValue::release(std::move(values));
}

const scriptTree::Handler *ScriptInstance::handler(const QString &handlerName) const {
  for (const scriptTree::Handler &candidate : script.handlers) {
    if (candidate.name == handlerName) return &candidate;
  }
  return nullptr;
}

ScriptValue *ScriptInstance::property(const QString &propertyName) {
  for (auto &[key, value] : properties) {
    if (key == propertyName) return &value;
  }
  return nullptr;
}

void ScriptInstance::setProperty(const QString &propertyName, const ScriptValue &value) {
  if (ScriptValue *known = property(propertyName)) {
    *known = value;
  } else {
    properties.emplace_back(propertyName, value);
  }
}
