#pragma once

#include <QByteArrayView>
#include <QString>

#include "values/Value.h"

/// What the reader of this program counts in one pass, as its log line tells it; zero when the system's
/// parser did the work.
struct PropertyListCounts {
  /// Runs of bytes between two tags, white space included.
  qint64 values = 0;
  /// Runs that were neither UTF-8 nor anything else that could be read.
  qint64 undecodable = 0;
  /// The result is that of this program's own pass.
  bool isManual = false;
};

namespace BMUtility {

/// The root container of a property list, every container in it mutable; null when there is none. With
/// `trySystemFirst`, and for binary lists, the system's parser goes first; what it refuses is read by a pass
/// of our own, which knows XML only, accepts what looks enough like it, bad bytes and missing ends included,
/// and reads integers as 32 bits, saturating. `errorDescription`, empty at the call, is set on failure; a set
/// text is a failure even if a root is returned, which then holds what was read before. Fewer than 6 bytes
/// give null without a text. Logs what it did and how fast. Memory in proportion to the bytes; nothing
/// recurses. Any thread; the bytes must not change meanwhile. `counts`, if given, is filled in.
Value mutablePropertyListFromDataTrySystemFirstErrorDescription(QByteArrayView data, bool trySystemFirst,
                                                                QString *errorDescription,
                                                                PropertyListCounts *counts = nullptr);

}  // namespace BMUtility
