#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include <QString>

/// Keeps answers back until what was changed before them has reached the disk. Those that come while the disk
/// is busy wait together and share its next visit, so scripts need not wait for each other's.
class AnswerGate {
 public:
  /// Brings all that was changed until now to the disk; empty, or why it did not get there.
  using Secure = std::function<QString()>;
  /// Gives an answer, or tells the problem in its place. On the gate's thread.
  using Release = std::function<void(const QString &problem)>;

  explicit AnswerGate(Secure secure);
  AnswerGate(const AnswerGate &) = delete;
  /// As `finish`.
  ~AnswerGate();

  /// Releases it once everything is secure that was changed before this call, in the order of the calls. Any
  /// thread; does not wait.
  void pass(Release release);
  /// Waits until all that came in is released; what comes later never is. Not from a release.
  void finish();

 private:
  void run();

  const Secure secure;
  std::mutex lock;
  std::condition_variable change;
  // Guarded by lock.
  std::vector<Release> waiting;
  bool finishing = false;

  std::thread thread;
};
