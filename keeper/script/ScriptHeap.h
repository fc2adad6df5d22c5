#pragma once

#include <memory>
#include <vector>

#include "keeper/script/ScriptInstance.h"

/// What a script has made: keeps it within a limit, and takes lists and objects that hold themselves apart at
/// the end. Its figure of what lives is right to a factor of two; small texts are left out. One thread.
class ScriptHeap {
 public:
  explicit ScriptHeap(qint64 limitBytes) : limit(limitBytes) {}
  ~ScriptHeap();
  ScriptHeap(const ScriptHeap &) = delete;
  ScriptHeap &operator=(const ScriptHeap &) = delete;

  /// Takes note of a value that was just made; hands it on. -2708 once too much lives.
  ScriptValue made(ScriptValue value);
  void made(const ScriptInstancePtr &instance) { instances.push_back(instance); }
  /// A list or record got one item more.
  void grew() { noted(qint64(sizeof(ScriptValue)) * 2); }

 private:
  void noted(qint64 bytes);
  qint64 sweep();

  qint64 limit;
  qint64 sinceSweep = 0;
  std::vector<QString> texts;
  std::vector<std::weak_ptr<ScriptListItems>> lists;
  std::vector<std::weak_ptr<ScriptRecordFields>> records;
  std::vector<std::weak_ptr<ScriptInstance>> instances;
};
