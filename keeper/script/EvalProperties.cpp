#include "keeper/script/EvalProperties.h"

#include <QFileInfo>
#include <algorithm>

#include "keeper/script/ScriptDates.h"
#include "keeper/script/ScriptDescriptions.h"
#include "keeper/script/ScriptNumbers.h"
#include "keeper/script/ScriptTextElements.h"

using Type = ScriptValue::Type;
using Found = std::optional<ScriptValue>;

namespace {

ScriptValue codePoints(const QString &text) {
  ScriptListItems points;
  for (const uint point : text.toUcs4()) points.emplace_back(qint64(point));
  return points.size() == 1 ? points.front() : ScriptValue::list(std::move(points));
}

QString quotedForm(const QString &text) {
  QString quoted = text;
  quoted.replace(u'\'', QStringLiteral("'\\''"));
  return u'\'' + quoted + u'\'';
}

/// The path of a folder ends in a slash.
QString posixPath(const ScriptFile &file) {
  const bool isFolder = file.isAlias && !file.path.endsWith(u'/') && QFileInfo(file.path).isDir();
  return isFolder ? file.path + u'/' : file.path;
}

Found ofText(ScriptRun &run, const QString &text, const QString &term) {
  if (term == u"length") return qint64(scriptText::characterCount(text));
  if (term == u"id") return run.heap.made(codePoints(text));
  if (term == u"quoted form") return run.heap.made(quotedForm(text));
  if (term == u"posix path") return text;
  return std::nullopt;
}

Found ofList(ScriptRun &run, const ScriptListItems &items, const QString &term) {
  if (term == u"length") return qint64(items.size());
  if (term == u"rest" && !items.empty()) {
    return run.heap.made(ScriptValue::list(ScriptListItems(items.begin() + 1, items.end())));
  }
  if (term == u"reverse") {
    return run.heap.made(ScriptValue::list(ScriptListItems(items.rbegin(), items.rend())));
  }
  return std::nullopt;
}

Found ofInstance(ScriptInstance &instance, const QString &term) {
  for (ScriptInstance *script = &instance; script; script = script->enclosing.get()) {
    if (const ScriptValue *known = script->property(term)) return *known;
  }
  if (term == u"name") return instance.name;
  return std::nullopt;
}

/// Numbers of applications may be larger than the language's whole numbers.
ScriptValue received(ScriptRun &run, ScriptValue value) {
  if (value.is(Type::Integer)) return scriptNumbers::whole(value.integer());
  if (value.is(Type::List) || value.is(Type::Record)) return run.heap.made(std::move(value));
  return value;
}

Found ofObject(ScriptRun &run, const ScriptValue &thing, const QString &term) {
  if (term == u"class") return ScriptClassName{thing.object()->className()};
  const bool isApplication = dynamic_cast<ScriptApplication *>(thing.object().get()) != nullptr;
  if (isApplication && term == u"running") return thing.object()->exists();
  return received(run, evalProperties::living(thing)->property(term));
}

Found find(ScriptRun &run, const ScriptValue &container, const QString &term) {
  switch (container.type()) {
    case Type::Object:
      return ofObject(run, container, term);
    case Type::Text:
      return ofText(run, container.text(), term);
    case Type::List:
      return ofList(run, container.items(), term);
    case Type::Record:
      if (const ScriptValue *field = container.field(term)) return *field;
      if (term == u"length") return qint64(container.fields().size());
      break;
    case Type::Date:
      return scriptDates::component(container.date(), term);
    case Type::File:
      if (term == u"posix path") return posixPath(container.file());
      break;
    case Type::Instance:
      return ofInstance(*container.instance(), term);
    case Type::Constant:
      if (term == u"text item delimiters") return run.delimiters;
      break;
    default:
      break;
  }
  return std::nullopt;
}

}  // namespace

ScriptObject *evalProperties::living(const ScriptValue &thing) {
  ScriptObject *object = thing.object().get();
  if (!object->exists() && dynamic_cast<ScriptApplication *>(object)) {
    throw ScriptError{scriptErrors::kApplicationNotRunning, QStringLiteral("Application isn't running."), {}};
  }
  return object;
}

ScriptValue evalProperties::get(ScriptRun &run, const ScriptValue &container, const QString &term) {
  if (Found found = find(run, container, term)) {
    if (!found->is(Type::NoValue)) return *found;
  } else if (term == u"text item delimiters") {
    return run.delimiters;
  } else if (term == u"class") {
    return ScriptClassName{scriptDescriptions::classOf(container)};
  }
  throw scriptDescriptions::cannotGet(term, container);
}

void evalProperties::set(ScriptRun &run, const ScriptValue &thing, const QString &term,
                         const ScriptValue &value) {
  if (thing.is(Type::List)) {
    for (const ScriptValue &one : ScriptListItems(thing.items())) {
      run.step();
      set(run, one, term, value);
    }
    return;
  }
  if (!thing.is(Type::Object)) {
    throw ScriptError{scriptErrors::kCannotSet,
                      QStringLiteral("Can't set %1 of %2.").arg(term, scriptDescriptions::describe(thing)),
                      {}};
  }
  living(thing)->setProperty(term, value);
}
