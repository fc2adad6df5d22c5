#include "ctl/JsonReader.h"

#include <QUtf8StringView>

std::optional<Value> JsonReader::read(QString *error) {
  Value root;
  bool good = QUtf8StringView(bytes).isValidUtf8() || fail("not UTF-8");
  good = good && readDocument(&root);
  if (good) {
    skipSpace();
    good = at == bytes.size() || fail("more than one value");
  }
  if (good) return root;
  if (error) *error = problem;
  return std::nullopt;
}

bool JsonReader::fail(const char *what) {
  problem = QStringLiteral("%1 at byte %2").arg(QString::fromUtf8(what)).arg(at);
  return false;
}

void JsonReader::skipSpace() {
  while (at < bytes.size() && QByteArrayView(" \t\r\n").contains(bytes[at])) ++at;
}

bool JsonReader::take(char expected) {
  if (at >= bytes.size() || bytes[at] != expected) return false;
  ++at;
  return true;
}

bool JsonReader::readDocument(Value *root) {
  bool isRoot = false;
  while (!isRoot) {
    bool isWhole = true;
    if (!beginValue(root, &isWhole)) return false;
    while (isWhole && !isRoot) {
      if (open.empty()) {
        isRoot = true;
      } else if (!storeAndClose(root, &isWhole)) {
        return false;
      }
    }
  }
  return true;
}

/// Reads a leaf or an empty container whole, or opens a container up to its first value.
bool JsonReader::beginValue(Value *value, bool *isWhole) {
  skipSpace();
  if (at >= bytes.size()) return fail("cut off");
  *isWhole = true;
  switch (bytes[at]) {
    case '{':
      return openContainer(Dictionary::make(), '}', value, isWhole);
    case '[':
      return openContainer(Array::make(), ']', value, isWhole);
    case '"': {
      QString text = QStringLiteral("");
      if (!readText(&text)) return false;
      *value = text;
      return true;
    }
    case 't':
      return readWord("true", true, value);
    case 'f':
      return readWord("false", false, value);
    case 'n':
      return readWord("null", Value(), value);
    default:
      return readNumber(value);
  }
}

bool JsonReader::openContainer(const Value &container, char closing, Value *value, bool *isWhole) {
  ++at;
  skipSpace();
  if (take(closing)) {
    *value = container;
    return true;
  }
  *isWhole = false;
  open.push_back(container);
  openKeys.emplace_back();
  return container.type() == Value::Type::Array || readKey();
}

/// Stores a whole value in the innermost container. Behind a comma the next value follows; else the container
/// is closed and is now the whole value itself.
bool JsonReader::storeAndClose(Value *value, bool *isWhole) {
  const Value container = open.back();
  const bool isArray = container.type() == Value::Type::Array;
  if (isArray) {
    container.toArray().append(*value);
  } else {
    container.toDictionary().set(openKeys.back(), *value);
  }
  skipSpace();
  if (take(',')) {
    *isWhole = false;
    return isArray || readKey();
  }
  if (!take(isArray ? ']' : '}')) return fail("no comma and no end of the object or array");
  open.pop_back();
  openKeys.pop_back();
  *value = container;
  return true;
}

bool JsonReader::readKey() {
  skipSpace();
  QString text;
  if (at >= bytes.size() || bytes[at] != '"') return fail("no key");
  if (!readText(&text)) return false;
  skipSpace();
  if (!take(':')) return fail("no colon");
  openKeys.back() = Key(text);
  return true;
}

bool JsonReader::readWord(QByteArrayView word, const Value &meaning, Value *value) {
  if (!bytes.sliced(at).startsWith(word)) return fail("no value");
  at += word.size();
  *value = meaning;
  return true;
}

bool JsonReader::readDigits() {
  const qsizetype begin = at;
  while (at < bytes.size() && bytes[at] >= '0' && bytes[at] <= '9') ++at;
  return at > begin;
}

bool JsonReader::readNumber(Value *value) {
  const qsizetype begin = at;
  take('-');
  const bool leadingZero = at < bytes.size() && bytes[at] == '0';
  const qsizetype firstDigit = at;
  if (!readDigits()) return fail("no value");
  if (leadingZero && at > firstDigit + 1) return fail("a number with leading zeros");
  bool isWhole = true;
  if (take('.')) {
    isWhole = false;
    if (!readDigits()) return fail("no digit behind the point");
  }
  if (take('e') || take('E')) {
    isWhole = false;
    if (!take('+')) take('-');
    if (!readDigits()) return fail("no digit in the exponent");
  }
  const QByteArray text = bytes.sliced(begin, at - begin).toByteArray();
  bool fits = false;
  const qint64 whole = isWhole ? text.toLongLong(&fits) : 0;
  if (fits) {
    *value = whole;
    return true;
  }
  bool inRange = false;
  *value = text.toDouble(&inRange);
  return inRange || fail("a number out of range");
}

/// Appends the text from its opening quote on and goes behind the closing one.
bool JsonReader::readText(QString *text) {
  ++at;
  for (;;) {
    const qsizetype begin = at;
    while (at < bytes.size() && bytes[at] != '"' && bytes[at] != '\\' && uchar(bytes[at]) >= 0x20) ++at;
    text->append(QString::fromUtf8(bytes.sliced(begin, at - begin)));
    if (at >= bytes.size()) return fail("a text without an end");
    if (take('"')) return true;
    if (bytes[at] != '\\') return fail("a control character in a text");
    if (!readEscape(text)) return false;
  }
}

bool JsonReader::readEscape(QString *text) {
  ++at;
  if (at >= bytes.size()) return fail("a text without an end");
  const char letter = bytes[at];
  if (letter == 'u') {
    bool isHexadecimal = false;
    const QByteArray digits =
        bytes.sliced(at + 1).first(qMin<qsizetype>(4, bytes.size() - at - 1)).toByteArray();
    const ushort unit = digits.toUShort(&isHexadecimal, 16);
    const bool allDigits =
        std::all_of(digits.begin(), digits.end(), [](char c) { return isxdigit(uchar(c)); });
    if (!isHexadecimal || !allDigits || digits.size() != 4) return fail("a bad escape");
    text->append(QChar(unit));
    at += 5;
    return true;
  }
  constexpr QByteArrayView kLetters("\"\\/bfnrt"), kMeanings("\"\\/\b\f\n\r\t");
  const qsizetype index = kLetters.indexOf(letter);
  if (index < 0) return fail("a bad escape");
  text->append(QLatin1Char(kMeanings[index]));
  ++at;
  return true;
}
