#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

/// The platform's Unicode tables. Any thread; no valid text fails.
class Unicode {
 public:
  virtual ~Unicode() = default;
  /// The text in 7-bit ASCII: any script in Latin letters, decomposed, without combining marks, then the
  /// ASCII forms of what is left; a character without one is dropped. Nothing if the conversion failed.
  virtual std::optional<QByteArray> foldedToAscii(const QString &text) const = 0;
  /// Canonical composition; the text itself if there is none.
  virtual QString composed(const QString &text) const = 0;
};
