#include "keeper/server/AnswerGate.h"

#include <utility>

AnswerGate::AnswerGate(Secure secure_) : secure(std::move(secure_)), thread([this] { run(); }) {}

AnswerGate::~AnswerGate() {
  finish();
}

void AnswerGate::pass(Release release) {
  {
    const std::lock_guard guard(lock);
    if (finishing) return;
    waiting.push_back(std::move(release));
  }
  change.notify_one();
}

void AnswerGate::finish() {
  if (!thread.joinable()) return;
  {
    const std::lock_guard guard(lock);
    finishing = true;
  }
  change.notify_one();
  thread.join();
}

void AnswerGate::run() {
  while (true) {
    std::vector<Release> taken;
    {
      std::unique_lock guard(lock);
      change.wait(guard, [this] { return finishing || !waiting.empty(); });
      if (waiting.empty()) return;
      taken.swap(waiting);
    }
    const QString problem = secure();
    for (const Release &release : taken) release(problem);
  }
}
