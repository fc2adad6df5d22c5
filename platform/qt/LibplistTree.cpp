#include "platform/qt/LibplistTree.h"

#include <QtEndian>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// The seconds of a date that 32 bits cannot tell: the node's binary form holds them all.
std::optional<double> farSecondsOfNode(plist_t node) {
  constexpr quint32 kBehindMagicAndType = 9;
  char *bytes = nullptr;
  uint32_t length = 0;
  plist_to_bin(node, &bytes, &length);
  const std::unique_ptr<char, decltype(&std::free)> owned(bytes, std::free);
  if (!bytes || length < kBehindMagicAndType + sizeof(quint64)) return std::nullopt;
  const auto seconds = std::bit_cast<double>(qFromBigEndian<quint64>(bytes + kBehindMagicAndType));
  return std::isnan(seconds) ? std::nullopt : std::optional(seconds);
}

Value dateOfNode(plist_t node) {
  int32_t seconds = 0, microseconds = 0;
  plist_get_date_val(node, &seconds, &microseconds);
  // libplist gives the smallest number for every date before 1932 or after 2069.
  if (seconds == std::numeric_limits<int32_t>::min()) {
    return Date{farSecondsOfNode(node).value_or(seconds)};
  }
  const double fraction = microseconds * 1e-6;
  return Date{seconds < 0 ? seconds - fraction : seconds + fraction};
}

Value numberOfNode(plist_t node, plist_type type) {
  uint64_t number = 0;
  if (type == PLIST_UID) {
    plist_get_uid_val(node, &number);
  } else {
    plist_get_uint_val(node, &number);
  }
  return qint64(number);
}

Value realOfNode(plist_t node) {
  double number = 0;
  plist_get_real_val(node, &number);
  return number;
}

Value textOfNode(plist_t node) {
  uint64_t length = 0;
  const char *text = plist_get_string_ptr(node, &length);
  return text ? QString::fromUtf8(text, qsizetype(length)) : QString(u""_qs);
}

Value dataOfNode(plist_t node) {
  uint64_t length = 0;
  const char *bytes = plist_get_data_ptr(node, &length);
  return bytes ? QByteArray(bytes, qsizetype(length)) : QByteArray("");
}

/// The node's value, an empty container for a container.
Value valueOfNode(plist_t node) {
  const plist_type type = plist_get_node_type(node);
  switch (type) {
    case PLIST_BOOLEAN: {
      uint8_t truth = 0;
      plist_get_bool_val(node, &truth);
      return truth != 0;
    }
    case PLIST_UINT:
    case PLIST_UID:
      return numberOfNode(node, type);
    case PLIST_REAL:
      return realOfNode(node);
    case PLIST_STRING:
    case PLIST_KEY:
      return textOfNode(node);
    case PLIST_DATE:
      return dateOfNode(node);
    case PLIST_DATA:
      return dataOfNode(node);
    case PLIST_ARRAY:
      return Array::make();
    case PLIST_DICT:
      return Dictionary::make();
    default:
      return {};
  }
}

/// Finds the keys of names. The same few come with every track, so the last ones are remembered.
class KeyMemory {
 public:
  Key key(const char *name) {
    const std::string_view text(name);
    Slot &slot = slots[std::hash<std::string_view>()(text) % slots.size()];
    if (slot.key.isAbsent() || slot.text != text) {
      slot = {std::string(text), Key(QString::fromUtf8(text.data(), qsizetype(text.size())))};
    }
    return slot.key;
  }

 private:
  struct Slot {
    std::string text;
    Key key;
  };
  std::array<Slot, 512> slots;
};

/// A container of the tree whose members wait to be read.
struct Reading {
  plist_t node;
  Value container;
};

void readMembers(const Reading &reading, std::vector<Reading> &waiting, KeyMemory &keys) {
  const auto taken = [&](plist_t node) {
    const Value value = valueOfNode(node);
    if (value.isContainer()) waiting.push_back({node, value});
    return value;
  };
  const bool isArray = reading.container.type() == Value::Type::Array;
  void *place = nullptr;
  plist_t node = nullptr;
  if (isArray) {
    plist_array_new_iter(reading.node, &place);
    plist_array_next_item(reading.node, place, &node);
  } else {
    plist_dict_new_iter(reading.node, &place);
  }
  while (isArray && node) {
    reading.container.toArray().append(taken(node));
    plist_array_next_item(reading.node, place, &node);
  }
  for (char *name = nullptr; !isArray;) {
    plist_dict_next_item(reading.node, place, &name, &node);
    if (!node) break;
    reading.container.toDictionary().set(keys.key(name), taken(node));
    std::free(name);
  }
  std::free(place);
}

plist_t nodeOfDate(Date date) {
  const double whole = std::floor(date.seconds);
  if (!(whole > std::numeric_limits<int32_t>::min())) {
    return plist_new_date(std::numeric_limits<int32_t>::min() + 1, 0);
  }
  if (whole >= std::numeric_limits<int32_t>::max()) {
    return plist_new_date(std::numeric_limits<int32_t>::max(), 0);
  }
  return plist_new_date(int32_t(whole), int32_t((date.seconds - whole) * 1e6));
}

/// Null with a reason for what the format cannot hold.
plist_t nodeOfValue(const Value &value, QString *reason) {
  switch (value.type()) {
    case Value::Type::Null:
      *reason = QStringLiteral("it holds nothing where a value must be");
      return nullptr;
    case Value::Type::Boolean:
      return plist_new_bool(value.toBool());
    case Value::Type::Integer:
      return plist_new_uint(uint64_t(value.toInteger()));
    case Value::Type::Real:
      return plist_new_real(value.toDouble());
    case Value::Type::Date:
      return nodeOfDate(*value.toDate());
    case Value::Type::Array:
      return plist_new_array();
    case Value::Type::Dictionary:
      return plist_new_dict();
    case Value::Type::Data: {
      const QByteArray bytes = value.toData();
      return plist_new_data(bytes.constData(), uint64_t(bytes.size()));
    }
    case Value::Type::Text:
      if (!value.toText().contains(QChar(0))) return plist_new_string(value.toText().toUtf8().constData());
      *reason = QStringLiteral("a text holds the character NUL");
  }
  return nullptr;
}

/// A container of the values whose members wait to be written.
struct Writing {
  Value container;
  plist_t node;
  int depth;
};

bool writeMembers(const Writing &writing, std::vector<Writing> &waiting, QString *reason) {
  const auto made = [&](const Value &value) {
    plist_t node = nodeOfValue(value, reason);
    if (node && value.isContainer()) waiting.push_back({value, node, writing.depth + 1});
    return node;
  };
  for (const Value &value : writing.container.toArray()) {
    plist_t node = made(value);
    if (!node) return false;
    plist_array_append_item(writing.node, node);
  }
  for (const DictionaryEntry &entry : writing.container.toDictionary()) {
    if (entry.key.text().contains(QChar(0))) {
      *reason = QStringLiteral("a key holds the character NUL");
      return false;
    }
    plist_t node = made(entry.value);
    if (!node) return false;
    plist_dict_set_item(writing.node, entry.key.text().toUtf8().constData(), node);
  }
  return true;
}

}  // namespace

Value valueOfTree(plist_t tree) {
  const Value root = valueOfNode(tree);
  std::vector<Reading> waiting;
  if (root.isContainer()) waiting.push_back({tree, root});
  KeyMemory keys;
  while (!waiting.empty()) {
    const Reading next = std::move(waiting.back());
    waiting.pop_back();
    readMembers(next, waiting, keys);
  }
  return root;
}

plist_t treeOfValue(const Value &root, int deepest, QString *reason) {
  plist_t tree = nodeOfValue(root, reason);
  std::vector<Writing> waiting;
  if (tree && root.isContainer()) waiting.push_back({root, tree, 1});
  while (!waiting.empty()) {
    const Writing next = std::move(waiting.back());
    waiting.pop_back();
    const bool tooDeep = next.depth > deepest;
    if (tooDeep) *reason = QStringLiteral("nested deeper than %1").arg(deepest);
    if (tooDeep || !writeMembers(next, waiting, reason)) {
      plist_free(tree);
      return nullptr;
    }
  }
  return tree;
}
