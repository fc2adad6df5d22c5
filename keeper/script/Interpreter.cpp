#include "keeper/script/Interpreter.h"

#include <new>

#include "keeper/script/EvalHandlers.h"
#include "keeper/script/ParsedScripts.h"
#include "keeper/script/ScriptCoercions.h"
#include "keeper/script/ScriptDescriptions.h"
#include "keeper/script/ScriptLibraries.h"

namespace {

using Type = ScriptValue::Type;

/// What a script gives back, in the words of the port.
class DescriptorMaker {
 public:
  ScriptDescriptor make(const ScriptValue &value) {
    switch (value.type()) {
      case Type::Text:
        return ScriptDescriptor::ofText(value.text());
      case Type::Integer:
        return ScriptDescriptor::ofInteger(value.integer());
      case Type::Real:
        return ScriptDescriptor::ofReal(value.real());
      case Type::Boolean:
        return ScriptDescriptor::ofBoolean(value.boolean());
      case Type::List:
        return ofList(value.items());
      default:
        return {};
    }
  }

 private:
  /// The most items, counted as often as they stand there.
  static constexpr qint64 kMostItems = 4 * 1024 * 1024;

  ScriptDescriptor ofList(const ScriptListItems &items) {
    if (++depth > scriptCoercions::kDeepest) throw scriptDescriptions::tooDeep();
    count += qint64(items.size()) + 1;
    if (count > kMostItems) throw scriptDescriptions::tooLarge();
    ScriptDescriptor made;
    made.type = ScriptDescriptor::Type::List;
    for (const ScriptValue &item : items) made.list.push_back(make(item));
    --depth;
    return made;
  }

  int depth = 0;
  qint64 count = 0;
};

ScriptOutcome failed(qint64 number, const QString &message, const SourceRange &range = {}) {
  ScriptOutcome outcome;
  outcome.failure = ScriptFailure{number, message, range.start, range.length};
  return outcome;
}

}  // namespace

/// What outlives a run.
struct Interpreter::Kept {
  explicit Kept(const ScriptDictionaryLookup &dictionaries) : parses(dictionaries), libraries(dictionaries) {}

  ParsedScripts parses;
  ScriptLibraries libraries;
};

Interpreter::Interpreter(ScriptApplication &application, const ScriptLimits &limits_)
    : Interpreter(std::vector<ScriptApplication *>{&application}, limits_) {}

Interpreter::Interpreter(std::vector<ScriptApplication *> applications_, const ScriptLimits &limits_)
    : applications(std::move(applications_)), limits(limits_) {
  kept = std::make_unique<Kept>([this](const QString &nameOrIdentifier) -> const ScriptDictionary * {
    for (const ScriptApplication *application : applications) {
      if (application->answersTo(nameOrIdentifier)) return &application->dictionary();
    }
    return nullptr;
  });
}

Interpreter::~Interpreter() = default;

ScriptOutcome Interpreter::run(const QString &source) {
  try {
    return evaluate(source);
  } catch (const ScriptError &error) {
    return failed(error.number, error.message, error.range);
  } catch (const std::bad_alloc &) {
    return failed(scriptErrors::kTooLarge, QStringLiteral("Out of memory."));
  }
}

ScriptOutcome Interpreter::evaluate(const QString &source) {
  const ParsedScriptPtr parsed = kept->parses.parsed(source);
  ScriptRun run(applications, limits, stopped, kept->libraries);
  run.main = parsed.get();
  run.sources.push_back(parsed);
  const ScriptInstancePtr script = evalHandlers::load(run, QString(), parsed, parsed->script, nullptr);
  ScriptOutcome outcome;
  outcome.result = DescriptorMaker().make(evalHandlers::run(run, script, {}));
  return outcome;
}
