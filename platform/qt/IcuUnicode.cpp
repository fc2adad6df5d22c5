#include "platform/qt/IcuUnicode.h"

#include <unicode/unorm2.h>
#include <unicode/uscript.h>

#include <cstring>

#include "platform/qt/IcuFolding.h"

namespace {

// A fold too long for its place, or one that its neighbours change.
constexpr quint8 kNotAlone = 0xFF;

struct Fold {
  char ascii[7];
  quint8 length;
};

}  // namespace

/// The folds of the 256 code units with one high byte.
struct FoldPage {
  std::array<Fold, 256> folds;
};

namespace {

Fold foldOf(char16_t unit, IcuFolding *folding) {
  Fold fold{{}, kNotAlone};
  if (QChar::isSurrogate(unit)) return fold;
  UErrorCode error = U_ZERO_ERROR;
  const UScriptCode script = uscript_getScript(unit, &error);
  const bool cyrillic = script == USCRIPT_CYRILLIC;
  if (U_FAILURE(error) ||
      (!cyrillic && script != USCRIPT_LATIN && script != USCRIPT_COMMON && script != USCRIPT_INHERITED))
    return fold;
  const std::optional<QByteArray> ascii = folding->foldedSimpleScript(QString(QChar(unit)), cyrillic);
  if (!ascii || ascii->size() > qsizetype(sizeof fold.ascii)) return fold;
  std::memcpy(fold.ascii, ascii->constData(), size_t(ascii->size()));
  fold.length = quint8(ascii->size());
  return fold;
}

}  // namespace

IcuUnicode::IcuUnicode() : folding(std::make_unique<IcuFolding>()) {}

IcuUnicode::~IcuUnicode() {
  for (auto &slot : pages) delete slot.load();
}

const FoldPage &IcuUnicode::page(unsigned number) const {
  std::atomic<const FoldPage *> &slot = pages[number];
  if (const FoldPage *made = slot.load(std::memory_order_acquire)) return *made;
  auto fresh = std::make_unique<FoldPage>();
  for (unsigned low = 0; low < 256; ++low)
    fresh->folds[low] = foldOf(char16_t(number << 8 | low), folding.get());
  const FoldPage *expected = nullptr;
  if (slot.compare_exchange_strong(expected, fresh.get(), std::memory_order_acq_rel)) return *fresh.release();
  return *expected;
}

bool IcuUnicode::foldByPages(QStringView text, QByteArray *ascii) const {
  ascii->resize(text.size() * qsizetype(sizeof(Fold)));
  char *out = ascii->data();
  const FoldPage *current = nullptr;
  unsigned currentNumber = 256;
  for (const QChar character : text) {
    const char16_t unit = character.unicode();
    if (unit < 0x80) {
      *out++ = char(unit);
      continue;
    }
    if (const unsigned number = unit >> 8; number != currentNumber) {
      current = &page(number);
      currentNumber = number;
    }
    const Fold &fold = current->folds[unit & 0xFF];
    if (fold.length == kNotAlone) return false;
    std::memcpy(out, fold.ascii, sizeof fold.ascii);
    out += fold.length;
  }
  ascii->resize(out - ascii->constData());
  return true;
}

std::optional<QByteArray> IcuUnicode::foldedToAscii(const QString &text) const {
  QByteArray ascii;
  if (foldByPages(text, &ascii)) return ascii;
  return folding->foldedFromMemory(text);
}

std::optional<QByteArray> IcuUnicode::foldedByTransliteration(const QString &text) const {
  return folding->folded(text);
}

QString IcuUnicode::composed(const QString &text) const {
  UErrorCode error = U_ZERO_ERROR;
  const UNormalizer2 *composer = unorm2_getNFCInstance(&error);
  const auto *source = reinterpret_cast<const UChar *>(text.utf16());
  const auto length = int32_t(text.size());
  if (U_FAILURE(error)) return text;
  if (unorm2_isNormalized(composer, source, length, &error) && U_SUCCESS(error)) return text;
  error = U_ZERO_ERROR;
  // Composition never makes a text more than three times as long.
  QString result(text.size() * 3 + 1, Qt::Uninitialized);
  const int32_t made = unorm2_normalize(composer, source, length, reinterpret_cast<UChar *>(result.data()),
                                        int32_t(result.size()), &error);
  if (U_FAILURE(error)) return text;
  result.resize(made);
  return result;
}
