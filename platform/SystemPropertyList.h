#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include "values/Value.h"

/// The platform's own property-list parser and writer. Any thread; never throws.
class SystemPropertyList {
 public:
  enum class Format { Xml, Binary };

  virtual ~SystemPropertyList() = default;
  /// The tree, all containers mutable; null with a text in `error` when the bytes are refused. Bytes that are
  /// nested too deep or would unfold beyond a multiple of their size are refused.
  virtual Value parse(QByteArrayView bytes, QString *error) const = 0;
  /// The tree in the given format; no bytes with a text in `error` when that fails. Nothing inside is left
  /// out.
  virtual QByteArray write(const Value &root, Format format, QString *error) const = 0;
};
