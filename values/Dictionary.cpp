#include <algorithm>
#include <array>
#include <bit>

#include "values/ContainerStorage.h"

namespace {
const Value kNothing;
}

void KeyIndex::rebuild(const std::vector<DictionaryEntry> &entries) {
  slots_.assign(std::bit_ceil(entries.size() * 2 + 2), 0);
  for (size_t entry = 0; entry < entries.size(); ++entry) {
    size_t slot = entries[entry].key.hash() & (slots_.size() - 1);
    while (slots_[slot]) slot = (slot + 1) & (slots_.size() - 1);
    slots_[slot] = quint32(entry + 1);
  }
}

void KeyIndex::add(const std::vector<DictionaryEntry> &entries, size_t entry) {
  if (entries.size() * 2 > slots_.size()) return rebuild(entries);
  size_t slot = entries[entry].key.hash() & (slots_.size() - 1);
  while (slots_[slot]) slot = (slot + 1) & (slots_.size() - 1);
  slots_[slot] = quint32(entry + 1);
}

qsizetype KeyIndex::find(const std::vector<DictionaryEntry> &entries, Key key) const {
  for (size_t slot = key.hash() & (slots_.size() - 1); slots_[slot];
       slot = (slot + 1) & (slots_.size() - 1)) {
    if (entries[slots_[slot] - 1].key == key) return slots_[slot] - 1;
  }
  return -1;
}

DictionaryStorage::DictionaryStorage(const DictionaryStorage &other)
    : Counted(), entries(other.entries), containers(other.containers) {
  refreshIndex();
}

qsizetype DictionaryStorage::find(Key key) const {
  if (index) return index->find(entries, key);
  // Dictionaries of one kind have their keys in one order: where this key stood last is where it mostly is.
  static thread_local std::array<quint8, 64> lastPlaces;
  quint8 &last = lastPlaces[key.hash() % lastPlaces.size()];
  if (last < entries.size() && entries[last].key == key) return last;
  for (size_t entry = 0; entry < entries.size(); ++entry) {
    if (entries[entry].key != key) continue;
    last = quint8(entry);
    return qsizetype(entry);
  }
  return -1;
}

void DictionaryStorage::append(Key key, Value value) {
  containers += value.isContainer() ? 1 : 0;
  entries.push_back({key, std::move(value)});
  if (index) {
    index->add(entries, entries.size() - 1);
  } else if (entries.size() > kIndexedSize) {
    refreshIndex();
  }
}

void DictionaryStorage::refreshIndex() {
  if (entries.size() <= kIndexedSize) {
    index.reset();
    return;
  }
  if (!index) index = std::make_unique<KeyIndex>();
  index->rebuild(entries);
}

void destroyBody(DictionaryStorage *storage) {
  delete storage;
}

Dictionary Dictionary::make(bool isMutable) {
  Dictionary made(new DictionaryBody);
  made.body->isMutable = isMutable;
  return made;
}

void Dictionary::freeze() const {
  if (body) body->isMutable = false;
}

qsizetype Dictionary::size() const {
  return body && body->storage ? qsizetype(body->storage->entries.size()) : 0;
}

const Value &Dictionary::value(Key key) const {
  if (!body || !body->storage || key.isAbsent()) return kNothing;
  const qsizetype entry = body->storage->find(key);
  return entry < 0 ? kNothing : body->storage->entries[size_t(entry)].value;
}

bool Dictionary::contains(Key key) const {
  return body && body->storage && !key.isAbsent() && body->storage->find(key) >= 0;
}

const DictionaryEntry *Dictionary::begin() const {
  return body && body->storage ? body->storage->entries.data() : nullptr;
}

const DictionaryEntry *Dictionary::end() const {
  return begin() + size();
}

DictionaryStorage *Dictionary::writable() const {
  Q_ASSERT(isMutable());
  if (!isMutable()) return nullptr;
  if (!body->storage) {
    body->storage = Shared<DictionaryStorage>(new DictionaryStorage);
  } else if (body->storage->isShared()) {
    body->storage = Shared<DictionaryStorage>(new DictionaryStorage(*body->storage));
  }
  return body->storage.get();
}

void Dictionary::set(Key key, Value value) const {
  if (value.isNull()) return remove(key);
  DictionaryStorage *storage = key.isAbsent() ? nullptr : writable();
  if (!storage) return;
  const qsizetype entry = storage->find(key);
  if (entry < 0) return storage->append(key, std::move(value));
  Value &place = storage->entries[size_t(entry)].value;
  storage->containers += int(value.isContainer()) - int(place.isContainer());
  place = std::move(value);
}

void Dictionary::remove(Key key) const {
  if (!contains(key)) return;
  if (DictionaryStorage *storage = writable()) {
    const auto place = storage->entries.begin() + storage->find(key);
    storage->containers -= place->value.isContainer() ? 1 : 0;
    storage->entries.erase(place);
    storage->refreshIndex();
  }
}

void Dictionary::removeIf(const std::function<bool(const DictionaryEntry &)> &test) const {
  if (isEmpty()) return;
  if (DictionaryStorage *storage = writable()) {
    std::erase_if(storage->entries, [&](const DictionaryEntry &entry) {
      if (!test(entry)) return false;
      storage->containers -= entry.value.isContainer() ? 1 : 0;
      return true;
    });
    storage->refreshIndex();
  }
}

void Dictionary::takeEntries(std::span<DictionaryEntry> entries) const {
  Q_ASSERT(isEmpty());
  DictionaryStorage *storage = entries.empty() ? nullptr : writable();
  if (!storage) return;
  storage->entries.assign(std::move_iterator(entries.begin()), std::move_iterator(entries.end()));
  storage->containers = std::count_if(storage->entries.begin(), storage->entries.end(),
                                      [](const DictionaryEntry &entry) { return entry.value.isContainer(); });
  storage->refreshIndex();
}

void Dictionary::reserve(qsizetype count) const {
  if (DictionaryStorage *storage = writable()) storage->entries.reserve(size_t(count));
}

void Dictionary::squeeze() const {
  if (DictionaryStorage *storage = body && body->storage ? writable() : nullptr)
    storage->entries.shrink_to_fit();
}

Dictionary Dictionary::copyMembers(bool isMutable) const {
  if (!body) return {};
  Dictionary made = make(isMutable);
  made.body->storage = body->storage;
  return made;
}

bool Dictionary::isPlain() const {
  return !body || !body->storage || body->storage->containers == 0;
}
