#pragma once

#include "platform/SystemPropertyList.h"

/// The system parser by libplist: bytes that begin with "bplist" are binary, all others XML. Input is looked
/// over before it gets to the library, which recurses and unfolds: trees deeper than 512, binary ones with a
/// circle and ones that unfold to more than 64 bytes for each byte of input are refused. UIDs read as
/// integers.
class LibplistPropertyList : public SystemPropertyList {
 public:
  static constexpr int kDeepest = 512;
  static constexpr qint64 kUnfoldedPerByte = 64;

  Value parse(QByteArrayView bytes, QString *error) const override;
  /// Refuses nothing inside (the format has no null value) and texts that hold the character NUL.
  QByteArray write(const Value &root, Format format, QString *error) const override;
};
