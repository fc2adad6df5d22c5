#include "keeper/script/ScriptHeap.h"

#include <algorithm>

#include "keeper/script/ScriptDescriptions.h"

namespace {

/// Shorter texts are not worth a note: a script of ten million steps makes at most some hundred MB of them.
constexpr qsizetype kSmallText = 32;
constexpr qint64 kOverhead = 64;

qint64 bytesOf(const QString &text) {
  return kOverhead + text.size() * qint64(sizeof(QChar));
}

qint64 bytesOf(const ScriptListItems &items) {
  return kOverhead + qint64(items.capacity() * sizeof(ScriptValue));
}

qint64 bytesOf(const ScriptRecordFields &fields) {
  return kOverhead + qint64(fields.capacity() * sizeof(ScriptRecordFields::value_type));
}

template <typename Container>
qint64 sweepContainers(std::vector<std::weak_ptr<Container>> &containers) {
  qint64 live = 0;
  std::erase_if(containers, [&live](const std::weak_ptr<Container> &container) {
    const std::shared_ptr<Container> alive = container.lock();
    if (alive) live += bytesOf(*alive);
    return !alive;
  });
  return live;
}

}  // namespace

ScriptHeap::~ScriptHeap() {
  for (const auto &instance : instances) {
    if (const ScriptInstancePtr alive = instance.lock()) alive->forgetProperties();
  }
  for (const auto &list : lists) {
    if (const auto alive = list.lock()) ScriptValue::release(std::move(*alive));
  }
  for (const auto &record : records) {
    const auto alive = record.lock();
    if (!alive) continue;
    ScriptRecordFields fields = std::move(*alive);
    alive->clear();
  }
}

ScriptValue ScriptHeap::made(ScriptValue value) {
  if (value.is(ScriptValue::Type::Text) && value.text().size() >= kSmallText) {
    texts.push_back(value.text());
    noted(bytesOf(value.text()));
  } else if (value.is(ScriptValue::Type::List)) {
    lists.push_back(value.sharedItems());
    noted(bytesOf(value.items()));
  } else if (value.is(ScriptValue::Type::Record)) {
    records.push_back(value.sharedFields());
    noted(bytesOf(value.fields()));
  }
  return value;
}

void ScriptHeap::noted(qint64 bytes) {
  sinceSweep += bytes;
  if (sinceSweep < limit / 8) return;
  sinceSweep = 0;
  if (sweep() > limit) throw scriptDescriptions::tooLarge();
}

qint64 ScriptHeap::sweep() {
  qint64 live = sweepContainers(lists) + sweepContainers(records);
  std::erase_if(texts, [](const QString &text) { return text.isDetached(); });
  for (const QString &text : texts) live += bytesOf(text);
  std::erase_if(instances, [](const auto &instance) { return instance.expired(); });
  return live;
}
