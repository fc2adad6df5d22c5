#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <memory>
#include <mutex>
#include <optional>

/// ICU's transliterators from any script to ASCII, each opened on first need (tens of milliseconds). They are
/// not safe on two threads at once, so one lock guards them. Any thread.
class IcuFolding {
 public:
  IcuFolding();
  ~IcuFolding();

  /// The whole road; nothing if ICU fails.
  std::optional<QByteArray> folded(const QString &text);
  /// The same for a text that came before, from memory.
  std::optional<QByteArray> foldedFromMemory(const QString &text);
  /// A text of Latin and Cyrillic letters and common signs, without opening the scripts that it does not
  /// need.
  std::optional<QByteArray> foldedSimpleScript(const QString &text, bool cyrillic);

 private:
  struct Transliterators;
  std::optional<QByteArray> foldedLocked(const QString &text);

  std::mutex lock;
  std::unique_ptr<Transliterators> transliterators;
  QHash<QString, QByteArray> memory;
};
