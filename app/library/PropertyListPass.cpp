#include "app/library/PropertyListPass.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>

#include "app/library/PropertyListDate.h"
#include "platform/HeapRoom.h"

namespace {

/// The next "<", or the end. Most stand a few bytes away, nearer than the call of a search is worth.
const char *nextTag(const char *at, const char *end) {
  for (const char *near = at + qMin<qsizetype>(8, end - at); at < near; ++at) {
    if (*at == '<') return at;
  }
  const void *found = std::memchr(at, '<', size_t(end - at));
  return found ? static_cast<const char *>(found) : end;
}

/// From this size on the tree's memory is prepared for; it is a little larger than the bytes.
constexpr qsizetype kLarge = 8 << 20;

/// Dictionaries of more entries are filled directly, with the index that they have by then.
constexpr size_t kLongestRun = 48;

qint32 intValue(const Value &text) {
  using Limits = std::numeric_limits<qint32>;
  return qint32(std::clamp<qint64>(text.toInteger(), Limits::min(), Limits::max()));
}

/// The number of a text of digits alone; -1 for other texts.
qint64 digitsValue(QByteArrayView bytes) {
  if (bytes.size() > 18) return -1;
  qint64 number = 0;
  for (const char byte : bytes) {
    const unsigned digit = static_cast<unsigned char>(byte) - unsigned('0');
    if (digit > 9) return -1;
    number = number * 10 + digit;
  }
  return number;
}

}  // namespace

PropertyListPass::PropertyListPass(QByteArrayView data)
    : begin(data.begin()), end(data.end()), texts(data.size()), key(&texts.anyKey()) {}

Value PropertyListPass::read() {
  const qsizetype size = end - begin;
  if (size >= kLarge) makeHeapRoom(size + size / 4);
  for (const char *at = begin; end - at > 1 && errorText.isEmpty();) at = turn(at);
  for (size_t depth = stack.size(); depth > 0; --depth) settle(stack[depth - 1]);
  if (stack.empty()) return {};
  const Frame root = std::move(stack.front());
  stack.clear();
  return root.array.isNull() ? Value(root.dictionary) : Value(root.array);
}

/// One tag and the text behind it. The place of the next tag.
const char *PropertyListPass::turn(const char *at) {
  at = nextTag(at, end);
  const FoundTag found = tagAt(at, end);
  if (found.tag == PropertyListTag::NotAscii) {
    errorText = QStringLiteral("invalid tag @ %1").arg(at - begin);
    return found.end;
  }
  if (found.tag == PropertyListTag::OpenDictionary || found.tag == PropertyListTag::OpenArray)
    open(found.tag);
  const char *text = found.end < end ? found.end + 1 : end;
  if (found.tag == PropertyListTag::Key) {
    if (const char *next = takeLikelyKey(text)) return next;
  }
  const char *next = nextTag(text, end);
  takeText(found.tag, QByteArrayView(text, next - text));
  if (found.tag == PropertyListTag::CloseContainer && stack.size() > 1) close();
  return next;
}

/// Most tracks have their keys in one order: takes the key that followed the present one last time if it
/// stands here, without a search for its end. The place behind it, or null.
const char *PropertyListPass::takeLikelyKey(const char *text) {
  KnownKey &likely = texts.likelyAfter(*key);
  const qsizetype size = likely.bytes.size();
  if (size == 0 || end - text <= size || text[size] != '<') return nullptr;
  if (std::memcmp(text, likely.bytes.data(), size_t(size)) != 0) return nullptr;
  key = &likely;
  texts.countPlain();
  return text + size;
}

void PropertyListPass::takeText(PropertyListTag tag, QByteArrayView bytes) {
  switch (tag) {
    case PropertyListTag::Key:
      takeKey(bytes);
      break;
    case PropertyListTag::String:
    case PropertyListTag::Integer:
    case PropertyListTag::Date: {
      Value value = valueOf(tag, bytes);
      if (!value.isNull()) store(std::move(value));
      break;
    }
    default:
      if (!bytes.isEmpty()) texts.skip(bytes);
      if (tag == PropertyListTag::True || tag == PropertyListTag::False) store(tag == PropertyListTag::True);
  }
}

void PropertyListPass::takeKey(QByteArrayView bytes) {
  if (bytes.isEmpty() || !isPlainText(bytes)) {
    KnownKey &other = texts.anyKey();
    other.key = bytes.isEmpty() ? Key() : Key(texts.decode(bytes));
    key = &other;
  } else {
    texts.countPlain();
    key = &texts.key(bytes, *key);
  }
}

Value PropertyListPass::valueOf(PropertyListTag tag, QByteArrayView bytes) {
  if (bytes.isEmpty()) return tag == PropertyListTag::Integer ? Value(0) : Value();
  if (tag == PropertyListTag::String) return texts.decodeShared(bytes, *key);
  if (isPlainText(bytes)) {
    texts.countPlain();
    if (tag == PropertyListTag::Date) {
      const std::optional<Date> date = propertyListDate(bytes);
      return date ? Value(*date) : Value();
    }
    const qint64 number = digitsValue(bytes);
    return number < 0 ? intValue(QString::fromLatin1(bytes))
                      : int(qMin<qint64>(number, std::numeric_limits<qint32>::max()));
  }
  const QString text = texts.decode(bytes);
  if (tag == PropertyListTag::Integer) return intValue(text);
  const std::optional<Date> date = propertyListDate(QStringView(text));
  return date ? Value(*date) : Value();
}

/// Begins a container and stores it where it belongs by now.
void PropertyListPass::open(PropertyListTag tag) {
  Frame frame;
  if (tag == PropertyListTag::OpenArray) {
    frame.array = Array::make();
    if (!stack.empty()) store(frame.array);
  } else {
    frame.dictionary = Dictionary::make();
    frame.isInRun = true;
    if (!stack.empty()) store(frame.dictionary);
  }
  frame.runStart = run.size();
  stack.push_back(std::move(frame));
}

void PropertyListPass::close() {
  settle(stack.back());
  stack.pop_back();
}

/// Gives a container that gets no more members its final size. The run must end with its entries.
void PropertyListPass::settle(Frame &frame) {
  if (frame.isInRun) {
    frame.dictionary.takeEntries(std::span(run).subspan(frame.runStart));
    run.erase(run.begin() + qsizetype(frame.runStart), run.end());
    frame.isInRun = false;
  } else if (frame.dictionary.isNull()) {
    frame.array.squeeze();
  } else {
    frame.dictionary.squeeze();
  }
}

/// Puts a value into the innermost container, if there is one and it has a key for it.
void PropertyListPass::store(Value value) {
  if (stack.empty()) return;
  Frame &frame = stack.back();
  if (!frame.array.isNull()) return frame.array.append(std::move(value));
  if (key->key.isAbsent()) return;
  if (!frame.isInRun) return frame.dictionary.set(key->key, std::move(value));
  for (size_t entry = frame.runStart; entry < run.size(); ++entry) {
    if (run[entry].key == key->key) {
      run[entry].value = std::move(value);
      return;
    }
  }
  run.push_back({key->key, std::move(value)});
  if (run.size() - frame.runStart > kLongestRun) settle(frame);
}
