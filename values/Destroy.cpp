#include "values/ContainerStorage.h"

// A deep tree is taken apart with a list of its own instead of the call stack: the body that loses its last
// owner while another one is being destroyed on this thread waits for its turn.

namespace {

struct Doomed {
  std::vector<ArrayBody *> arrays;
  std::vector<DictionaryBody *> dictionaries;
  bool draining = false;

  void drain() {
    draining = true;
    while (!arrays.empty() || !dictionaries.empty()) {
      if (!arrays.empty()) {
        ArrayBody *next = arrays.back();
        arrays.pop_back();
        delete next;
      } else {
        DictionaryBody *next = dictionaries.back();
        dictionaries.pop_back();
        delete next;
      }
    }
    draining = false;
  }
};

/// Bodies without containers need no turn: nothing below them can be deep.
Doomed &doomed() {
  static thread_local Doomed list;
  return list;
}

}  // namespace

void destroyBody(ArrayBody *body) {
  if (!body->storage || body->storage->unplain == 0) {
    delete body;
    return;
  }
  doomed().arrays.push_back(body);
  if (!doomed().draining) doomed().drain();
}

void destroyBody(DictionaryBody *body) {
  if (!body->storage || body->storage->containers == 0) {
    delete body;
    return;
  }
  doomed().dictionaries.push_back(body);
  if (!doomed().draining) doomed().drain();
}
