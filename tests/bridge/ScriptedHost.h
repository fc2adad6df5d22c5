#pragma once

#include <deque>
#include <functional>
#include <mutex>

#include "platform/Platform.h"

/// A music application that answers as it is told: each script with the next answer, then with nothing.
class ScriptedHost : public ScriptHost {
 public:
  using Answer = std::function<ScriptOutcome()>;

  /// Any thread from here on.
  void answer(Answer next) {
    const std::lock_guard guard(lock);
    answers.push_back(std::move(next));
  }
  void answer(const QString &text) {
    answer(Answer([=] { return resultOf(ScriptDescriptor::ofText(text)); }));
  }
  void answer(const ScriptFailure &failure) {
    answer(Answer([=] { return ScriptOutcome{{}, failure}; }));
  }
  /// The answer comes after so many seconds of the platform's clock.
  void answerAfter(double seconds, const QString &text) {
    answer(Answer([=] {
      platform().clock->sleep(seconds);
      return resultOf(ScriptDescriptor::ofText(text));
    }));
  }
  static ScriptOutcome resultOf(const ScriptDescriptor &result) { return {result, {}}; }

  ScriptOutcome run(const QString &source) override {
    Answer next;
    {
      const std::lock_guard guard(lock);
      ran += source;
      mostAtOnce = std::max(mostAtOnce, ++atOnce);
      if (!answers.empty()) {
        next = std::move(answers.front());
        answers.pop_front();
      }
    }
    const ScriptOutcome outcome = next ? next() : resultOf(ScriptDescriptor());
    const std::lock_guard guard(lock);
    --atOnce;
    return outcome;
  }

  /// The scripts that came, in order.
  QStringList scripts() const {
    const std::lock_guard guard(lock);
    return ran;
  }
  /// How many were in flight together at most.
  int most() const {
    const std::lock_guard guard(lock);
    return mostAtOnce;
  }

 private:
  mutable std::mutex lock;
  // Guarded by lock.
  std::deque<Answer> answers;
  QStringList ran;
  int atOnce = 0, mostAtOnce = 0;
};
