#include "values/ContainerStorage.h"

namespace {
const Value kNothing;
}

void destroyBody(ArrayStorage *storage) { delete storage; }

Array Array::make(bool isMutable) {
  Array made(new ArrayBody);
  made.body->isMutable = isMutable;
  return made;
}

void Array::freeze() const {
  if (body) body->isMutable = false;
}

qsizetype Array::size() const { return body && body->storage ? qsizetype(body->storage->values.size()) : 0; }

const Value &Array::at(qsizetype index) const {
  return index >= 0 && index < size() ? body->storage->values[size_t(index)] : kNothing;
}

const Value *Array::begin() const { return body && body->storage ? body->storage->values.data() : nullptr; }

const Value *Array::end() const { return begin() + size(); }

ArrayStorage *Array::writable() const {
  Q_ASSERT(isMutable());
  if (!isMutable()) return nullptr;
  if (!body->storage) {
    body->storage = Shared<ArrayStorage>(new ArrayStorage);
  } else if (body->storage->isShared()) {
    body->storage = Shared<ArrayStorage>(new ArrayStorage(*body->storage));
  }
  return body->storage.get();
}

void Array::append(Value value) const {
  if (ArrayStorage *storage = writable()) {
    storage->unplain += isPlainMember(value) ? 0 : 1;
    storage->values.push_back(std::move(value));
  }
}

void Array::set(qsizetype index, Value value) const {
  if (index < 0 || index >= size()) return;
  if (ArrayStorage *storage = writable()) {
    Value &place = storage->values[size_t(index)];
    storage->unplain += int(!isPlainMember(value)) - int(!isPlainMember(place));
    place = std::move(value);
  }
}

void Array::removeAt(qsizetype index) const {
  if (index < 0 || index >= size()) return;
  if (ArrayStorage *storage = writable()) {
    const auto place = storage->values.begin() + index;
    storage->unplain -= isPlainMember(*place) ? 0 : 1;
    storage->values.erase(place);
  }
}

void Array::reserve(qsizetype count) const {
  if (ArrayStorage *storage = writable()) storage->values.reserve(size_t(count));
}

void Array::squeeze() const {
  if (ArrayStorage *storage = body && body->storage ? writable() : nullptr) storage->values.shrink_to_fit();
}

Array Array::copyMembers(bool isMutable) const {
  if (!body) return {};
  Array made = make(isMutable);
  made.body->storage = body->storage;
  return made;
}

bool Array::isPlain() const { return !body || !body->storage || body->storage->unplain == 0; }
