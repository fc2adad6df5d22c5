#include "values/Key.h"

#include <mutex>
#include <shared_mutex>
#include <unordered_set>

namespace {

struct TextHash {
  using is_transparent = void;
  size_t operator()(const QString &text) const { return qHash(QStringView(text)); }
  size_t operator()(QStringView text) const { return qHash(text); }
};

struct TextEqual {
  using is_transparent = void;
  bool operator()(QStringView a, QStringView b) const { return a == b; }
};

/// Every key's text. Nodes never move and are never freed: a key outlives every dictionary.
struct InternTable {
  std::shared_mutex lock;
  std::unordered_set<QString, TextHash, TextEqual> texts;
};

InternTable &table() {
  static InternTable *const made = new InternTable;
  return *made;
}

}  // namespace

Key::Key(QStringView text) {
  *this = find(text);
  if (interned) return;
  InternTable &all = table();
  std::unique_lock guard(all.lock);
  interned = &*all.texts.insert(text.toString()).first;
}

Key Key::find(QStringView text) {
  InternTable &all = table();
  std::shared_lock guard(all.lock);
  const auto place = all.texts.find(text);
  Key found;
  if (place != all.texts.end()) found.interned = &*place;
  return found;
}

const QString &Key::text() const {
  static const QString none;
  return interned ? *interned : none;
}
