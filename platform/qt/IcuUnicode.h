#pragma once

#include <array>
#include <atomic>
#include <memory>

#include "platform/Unicode.h"

struct FoldPage;
class IcuFolding;

/// Unicode by ICU. Scripts whose letters fold one by one (Latin, Cyrillic, and the signs common to all
/// scripts) are answered from pages that are filled on first need; everything else takes ICU's own road,
/// under a lock and with a memory of the last texts. Nothing of ICU is loaded before the first text that
/// needs it.
class IcuUnicode : public Unicode {
 public:
  IcuUnicode();
  ~IcuUnicode() override;

  std::optional<QByteArray> foldedToAscii(const QString &text) const override;
  QString composed(const QString &text) const override;

  /// What `foldedToAscii` answers, by ICU's transliterators over the whole text: slow, and the measure of the
  /// pages' truth.
  std::optional<QByteArray> foldedByTransliteration(const QString &text) const;

 private:
  const FoldPage &page(unsigned number) const;
  bool foldByPages(QStringView text, QByteArray *ascii) const;

  mutable std::array<std::atomic<const FoldPage *>, 256> pages{};
  std::unique_ptr<IcuFolding> folding;
};
