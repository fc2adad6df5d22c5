#include "ctl/ScriptWitness.h"

class ScriptWitness::Host : public ScriptHost {
 public:
  explicit Host(ScriptHost *application) : inner(application) {}

  ScriptOutcome run(const QString &source) override {
    const ScriptOutcome outcome = inner->run(source);
    const std::lock_guard guard(lock);
    last = outcome.failure;
    text =
        outcome.failure ? source.mid(outcome.failure->rangeStart, outcome.failure->rangeLength) : QString();
    return outcome;
  }

  std::mutex lock;
  // Guarded by lock.
  std::optional<ScriptFailure> last;
  QString text;

 private:
  ScriptHost *const inner;
};

ScriptWitness::ScriptWitness() : outer(platform()), host(new Host(outer.scriptHost)) {
  Platform watched = outer;
  watched.scriptHost = host;
  setPlatform(watched);
}

ScriptWitness::~ScriptWitness() {
  setPlatform(outer);
}

std::optional<ScriptFailure> ScriptWitness::failure() const {
  const std::lock_guard guard(host->lock);
  return host->last;
}

QString ScriptWitness::offendingText() const {
  const std::lock_guard guard(host->lock);
  return host->text;
}
