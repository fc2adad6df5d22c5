#include "keeper/script/EvalStatements.h"

#include "keeper/script/EvalAssignments.h"
#include "keeper/script/EvalErrors.h"
#include "keeper/script/EvalExpressions.h"
#include "keeper/script/EvalHandlers.h"
#include "keeper/script/EvalLoops.h"
#include "keeper/script/EvalReferences.h"
#include "keeper/script/ScriptDescriptions.h"

using namespace scriptTree;
using evalStatements::execute;
using evalStatements::Flow;
using Type = ScriptValue::Type;

namespace {

void applyAttributes(ScriptRun &run, const QStringList &attributes, bool ignored) {
  for (const QString &attribute : attributes) run.rules.setIgnoring(attribute, ignored);
}

/// One operation for each form of a statement.
struct Executor {
  ScriptRun &run;

  Flow operator()(const Evaluate &statement) const {
    run.frame->result = evalExpressions::evaluate(run, *statement.expression);
    return Flow::On;
  }

  Flow operator()(const Set &statement) const {
    const ScriptValue value = evalExpressions::evaluate(run, *statement.value);
    evalAssignments::assign(run, *statement.target, value);
    run.frame->result = value;
    return Flow::On;
  }

  Flow operator()(const Copy &statement) const {
    const ScriptValue value = evalAssignments::copyOf(run, evalExpressions::evaluate(run, *statement.value));
    evalAssignments::assign(run, *statement.target, value);
    run.frame->result = value;
    return Flow::On;
  }

  Flow operator()(const Return &statement) const {
    run.frame->returned = statement.value ? evalExpressions::evaluate(run, *statement.value) : ScriptValue();
    return Flow::Returned;
  }

  Flow operator()(const If &statement) const {
    for (const If::Branch &branch : statement.branches) {
      if (evalExpressions::condition(run, *branch.condition)) return execute(run, branch.body);
    }
    return execute(run, statement.otherwise);
  }

  Flow operator()(const Repeat &statement) const { return evalLoops::repeat(run, statement); }
  Flow operator()(const ExitRepeat &) const { return Flow::Exited; }

  Flow operator()(const Tell &statement) const {
    const ScriptValue target = evalExpressions::unresolved(run, *statement.target);
    const ScriptRestore<ScriptValue> it(run.it);
    const ScriptRestore<ScriptApplication *> application(run.application);
    run.it = target;
    if (ScriptApplication *told = evalReferences::applicationOf(target)) run.application = told;
    return execute(run, statement.body);
  }

  Flow operator()(const UsingTerms &statement) const { return execute(run, statement.body); }
  Flow operator()(const Try &statement) const { return evalErrors::attempt(run, statement); }

  Flow operator()(const Raise &statement) const { evalErrors::raise(run, statement); }

  Flow operator()(const Declare &statement) const {
    for (const QString &name : statement.names) {
      if (statement.isGlobal) {
        if (!run.frame->globals.contains(name)) run.frame->globals.append(name);
      } else if (!run.frame->local(name)) {
        run.frame->locals.emplace_back(name, ScriptValue());
      }
    }
    return Flow::On;
  }

  Flow operator()(const WithTimeout &statement) const {
    const ScriptRestore<double> seconds(run.commandSeconds);
    run.commandSeconds = evalExpressions::real(run, *statement.seconds);
    return execute(run, statement.body);
  }

  Flow operator()(const Considering &statement) const {
    const ScriptTextRules before = run.rules;
    const Attributes restore(run, before);
    applyAttributes(run, statement.considered, false);
    applyAttributes(run, statement.ignored, true);
    return execute(run, statement.body);
  }

  Flow operator()(const DefineScript &statement) const {
    const ScriptInstancePtr made =
        evalHandlers::load(run, statement.name, run.frame->me->source, *statement.script, run.frame->me);
    run.setVariable(statement.name, made);
    run.frame->result = made;
    return Flow::On;
  }

 private:
  /// Puts the attributes back as they were, but not the delimiters.
  class Attributes {
   public:
    Attributes(ScriptRun &run_, const ScriptTextRules &before_) : run(run_), before(before_) {}
    ~Attributes() {
      QStringList delimiters = std::move(run.rules.delimiters);
      run.rules = before;
      run.rules.delimiters = std::move(delimiters);
    }
    Attributes(const Attributes &) = delete;
    Attributes &operator=(const Attributes &) = delete;

   private:
    ScriptRun &run;
    const ScriptTextRules &before;
  };
};

}  // namespace

Flow evalStatements::execute(ScriptRun &run, const Block &block) {
  for (const Statement &statement : block) {
    try {
      run.step();
      const Flow flow = std::visit(Executor{run}, statement.form);
      if (flow != Flow::On) return flow;
    } catch (ScriptError &error) {
      if (error.range.length == 0) error.range = statement.range;
      throw;
    }
  }
  return Flow::On;
}
