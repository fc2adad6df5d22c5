#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

/// The platform's Unicode tables. Any thread; no valid text fails.
class Unicode {
 public:
  virtual ~Unicode() = default;
  /// Any script in Latin letters.
  virtual QString toLatin(const QString &text) const = 0;
  /// Decomposed, without combining marks.
  virtual QString withoutMarks(const QString &text) const = 0;
  /// 7-bit ASCII; a character without an ASCII form is dropped. Nothing if the conversion failed.
  virtual std::optional<QByteArray> toAscii(const QString &text) const = 0;
  /// Canonical composition; the text itself if there is none.
  virtual QString composed(const QString &text) const = 0;
};
