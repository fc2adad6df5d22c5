#include "values/Key.h"

#include <deque>
#include <mutex>
#include <shared_mutex>
#include <vector>

namespace {

/// Every key's text, never moved and never freed: a key outlives every dictionary. Open addressing with the
/// hashes beside the places, so that a text that is not there costs one look at memory.
class InternTable {
 public:
  std::shared_mutex lock;

  const QString *find(QStringView text, size_t hash) const {
    for (size_t slot = hash & mask(); slots[slot].text; slot = (slot + 1) & mask()) {
      if (slots[slot].hash == hash && *slots[slot].text == text) return slots[slot].text;
    }
    return nullptr;
  }

  const QString *insert(QStringView text, size_t hash) {
    if (const QString *there = find(text, hash)) return there;
    if (texts.size() * 2 >= slots.size()) grow();
    const QString *made = &texts.emplace_back(text.toString());
    place({hash, made});
    return made;
  }

 private:
  struct Slot {
    size_t hash = 0;
    const QString *text = nullptr;
  };

  size_t mask() const { return slots.size() - 1; }

  void place(Slot made) {
    size_t slot = made.hash & mask();
    while (slots[slot].text) slot = (slot + 1) & mask();
    slots[slot] = made;
  }

  void grow() {
    const std::vector<Slot> old = std::exchange(slots, std::vector<Slot>(slots.size() * 2));
    for (const Slot &slot : old) {
      if (slot.text) place(slot);
    }
  }

  std::deque<QString> texts;
  std::vector<Slot> slots = std::vector<Slot>(1024);
};

InternTable &table() {
  static InternTable *const made = new InternTable;
  return *made;
}

}  // namespace

Key::Key(QStringView text) {
  const size_t hash = qHash(text);
  InternTable &all = table();
  {
    std::shared_lock guard(all.lock);
    interned = all.find(text, hash);
  }
  if (interned) return;
  std::unique_lock guard(all.lock);
  interned = all.insert(text, hash);
}

Key Key::find(QStringView text) {
  InternTable &all = table();
  std::shared_lock guard(all.lock);
  Key found;
  found.interned = all.find(text, qHash(text));
  return found;
}

const QString &Key::text() const {
  static const QString none;
  return interned ? *interned : none;
}
