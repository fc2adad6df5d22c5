#include "text/Simplified.h"

#include <atomic>
#include <memory>
#include <mutex>

#include "text/PlainAscii.h"
#include "text/SimplifierTable.h"
#include "text/Words.h"

namespace {

/// The table in force, for all threads; each keeps its own reference and renews it when the number has moved,
/// so that a name costs no lock.
struct Simplifiers {
  std::mutex lock;
  std::shared_ptr<const SimplifierTable> table;
  std::atomic<quint64> number{1};
};
Simplifiers installed;

void install(std::shared_ptr<const SimplifierTable> table) {
  const std::lock_guard guard(installed.lock);
  installed.table = std::move(table);
  installed.number.fetch_add(1, std::memory_order_release);
}

std::shared_ptr<const SimplifierTable> tableInForce() {
  static thread_local std::shared_ptr<const SimplifierTable> own;
  static thread_local quint64 ownNumber = 0;
  if (ownNumber != installed.number.load(std::memory_order_acquire)) {
    const std::lock_guard guard(installed.lock);
    own = installed.table;
    ownNumber = installed.number.load(std::memory_order_relaxed);
  }
  return own;
}

char lowered(char unit) {
  return unit >= 'A' && unit <= 'Z' ? char(unit + 0x20) : unit;
}

/// The text in lower case with a blank at each end; false if it is not ASCII.
bool copyAscii(QStringView text, std::string &out) {
  out.resize(size_t(text.size()) + 2);
  char *to = out.data();
  *to++ = ' ';
  char16_t seen = 0;
  for (const QChar unit : text) {
    seen |= unit.unicode();
    *to++ = lowered(char(unit.unicode()));
  }
  *to = ' ';
  return seen < 0x80;
}

bool isSpace(char unit) {
  return unit == ' ' || (unit >= '\t' && unit <= '\r');
}

/// Trims white space and puts one blank at each end.
void trimBetweenBlanks(std::string &text) {
  size_t from = 0, to = text.size();
  while (from < to && isSpace(text[from])) ++from;
  while (to > from && isSpace(text[to - 1])) --to;
  text.erase(to).erase(0, from).insert(text.begin(), ' ');
  text += ' ';
}

const ByteReplacements &minorWordReplacements() {
  static const ByteReplacements made = [] {
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const QString &word : minorWords()) pairs.emplace_back(' ' + word.toStdString() + ' ', " ");
    return ByteReplacements(std::move(pairs));
  }();
  return made;
}

char16_t codeOf(char unit) {
  return char16_t(static_cast<unsigned char>(unit));
}
char16_t codeOf(QChar unit) {
  return unit.unicode();
}

/// `copyAscii` for a text with other letters: those that a search takes for "s" and "k" are that, the others
/// stand as a byte that is in no word.
void copySearched(QStringView text, std::string &out) {
  constexpr char16_t kLongS = 0x017F, kKelvin = 0x212A;
  out.resize(size_t(text.size()) + 2);
  char *to = out.data();
  *to++ = ' ';
  for (const QChar unit : text) {
    const char16_t code = unit.unicode();
    *to++ = code < 0x80 ? lowered(char(code)) : code == kLongS ? 's' : code == kKelvin ? 'k' : '\x01';
  }
  *to = ' ';
}

/// A text with letters beyond ASCII, without minor words and outer white space. Few hold a minor word, and
/// bytes tell it sooner.
QString withoutMinorWords(const QString &text, std::string &working, std::string &scratch) {
  copySearched(text, working);
  minorWordReplacements().apply(working, scratch);
  const bool hasNone = working.size() == size_t(text.size()) + 2;
  return hasNone ? text.trimmed() : stringWithoutWords(text, minorWords());
}

/// The letters and digits of a text, in lower case.
template <class Text>
QString lettersAndDigits(const Text &text) {
  QByteArray kept(qsizetype(text.size()), Qt::Uninitialized);
  char *out = kept.data();
  for (const auto unit : text) {
    const char16_t code = codeOf(unit);
    const char letter = code < 0x80 ? lowered(char(code)) : ' ';
    *out = letter;
    out += (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9');
  }
  return QString::fromLatin1(kept.constData(), out - kept.constData());
}

}  // namespace

void setSimplifiersDictionaryRemoveTrailingS(const Dictionary &simplifiers, bool removeTrailingS) {
  install(std::make_shared<const SimplifierTable>(simplifiers, removeTrailingS));
}

void clearSimplifiers() {
  install(nullptr);
}

QString simplified(const QString &text) {
  if (text.isEmpty()) return text;
  const std::shared_ptr<const SimplifierTable> table = tableInForce();
  static thread_local std::string working, scratch;
  if (copyAscii(text, working)) {
    minorWordReplacements().apply(working, scratch);
    trimBetweenBlanks(working);
  } else if (const QString folded = plainASCIIString(withoutMinorWords(text, working, scratch));
             !copyAscii(folded, working)) {
    const QString padded = u' ' + folded + u' ';
    const QString key = lettersAndDigits(table ? table->applied(padded) : padded);
    return key.isEmpty() ? text.toLower() : key;
  }
  QString key;
  if (table && !table->bytes()) {
    key = lettersAndDigits(table->applied(QString::fromStdString(working)));
  } else {
    if (table) table->bytes()->apply(working, scratch);
    key = lettersAndDigits(working);
  }
  return key.isEmpty() ? text.toLower() : key;
}

Value simplifiedValue(const Value &text) {
  return text.isText() ? Value(simplified(text.toText())) : Value();
}

bool isSimpleEqualTo(const QString &text, const QString &other) {
  if (other.isNull()) return false;
  return text == other || simplified(text) == simplified(other);
}
