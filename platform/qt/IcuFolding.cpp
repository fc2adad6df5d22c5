#include "platform/qt/IcuFolding.h"

#include <unicode/translit.h>

namespace {

// Enough for the distinct artists and albums that a scan comes back to.
constexpr qsizetype kRemembered = 16384;

std::unique_ptr<icu::Transliterator> opened(const char16_t *name) {
  UErrorCode error = U_ZERO_ERROR;
  UParseError place;
  std::unique_ptr<icu::Transliterator> made(
      icu::Transliterator::createInstance(icu::UnicodeString(name), UTRANS_FORWARD, place, error));
  return U_SUCCESS(error) ? std::move(made) : nullptr;
}

/// Opened by the first text that needs it.
class LazyTransliterator {
 public:
  explicit LazyTransliterator(const char16_t *icuName) : name(icuName) {}
  bool apply(icu::UnicodeString &text) {
    if (!held) held = opened(name);
    if (held) held->transliterate(text);
    return held != nullptr;
  }

 private:
  const char16_t *name;
  std::unique_ptr<icu::Transliterator> held;
};

icu::UnicodeString icuText(const QString &text) {
  return icu::UnicodeString(reinterpret_cast<const char16_t *>(text.utf16()), int32_t(text.size()));
}

QByteArray asciiOf(const icu::UnicodeString &text) {
  QByteArray ascii;
  ascii.reserve(text.length());
  for (int32_t i = 0; i < text.length(); ++i) {
    if (text[i] < 0x80) ascii.append(char(text[i]));
  }
  return ascii;
}

}  // namespace

struct IcuFolding::Transliterators {
  LazyTransliterator toLatin{u"Any-Latin"};
  LazyTransliterator cyrillicToLatin{u"Cyrillic-Latin"};
  LazyTransliterator latinToAscii{u"NFD; [:M:] Remove; Latin-ASCII"};
};

IcuFolding::IcuFolding() : transliterators(std::make_unique<Transliterators>()) {}
IcuFolding::~IcuFolding() = default;

std::optional<QByteArray> IcuFolding::foldedLocked(const QString &text) {
  icu::UnicodeString working = icuText(text);
  if (!transliterators->toLatin.apply(working)) return std::nullopt;
  if (!transliterators->latinToAscii.apply(working)) return std::nullopt;
  return asciiOf(working);
}

std::optional<QByteArray> IcuFolding::folded(const QString &text) {
  const std::lock_guard guard(lock);
  return foldedLocked(text);
}

std::optional<QByteArray> IcuFolding::foldedFromMemory(const QString &text) {
  const std::lock_guard guard(lock);
  if (const auto known = memory.constFind(text); known != memory.constEnd()) return *known;
  const std::optional<QByteArray> ascii = foldedLocked(text);
  if (!ascii) return std::nullopt;
  if (memory.size() >= kRemembered) memory.clear();
  memory.insert(text, *ascii);
  return ascii;
}

std::optional<QByteArray> IcuFolding::foldedSimpleScript(const QString &text, bool cyrillic) {
  const std::lock_guard guard(lock);
  icu::UnicodeString working = icuText(text);
  if (cyrillic && !transliterators->cyrillicToLatin.apply(working)) return std::nullopt;
  if (!transliterators->latinToAscii.apply(working)) return std::nullopt;
  return asciiOf(working);
}
