#include "values/ContainerStorage.h"

// A deep tree is taken apart with a list of its own instead of the call stack: the body that loses its last
// owner while another one is being destroyed on this thread waits for its turn.

namespace {

struct Doomed {
  std::vector<ArrayBody *> arrays;
  std::vector<DictionaryBody *> dictionaries;

  void drain() {
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
  }
};

/// The list of the destruction that goes on in this thread. A plain pointer: containers in static objects go
/// after everything of the thread that needs a destructor.
thread_local Doomed *ongoing = nullptr;

/// Puts a body on the list, and takes all apart unless that goes on already.
template <class Body>
void doom(Body *body, std::vector<Body *> Doomed::*bodies) {
  if (ongoing) return (ongoing->*bodies).push_back(body);
  Doomed list;
  ongoing = &list;
  (list.*bodies).push_back(body);
  list.drain();
  ongoing = nullptr;
}

}  // namespace

// Bodies without containers need no turn: nothing below them can be deep.
void destroyBody(ArrayBody *body) {
  if (!body->storage || body->storage->unplain == 0) {
    delete body;
    return;
  }
  doom(body, &Doomed::arrays);
}

void destroyBody(DictionaryBody *body) {
  if (!body->storage || body->storage->containers == 0) {
    delete body;
    return;
  }
  doom(body, &Doomed::dictionaries);
}
