#pragma once

#include <QByteArray>
#include <optional>

/// Cuts a stream of bytes into messages. Holds no more than has come, whatever length is announced. One
/// thread.
class MessageReader {
 public:
  /// Takes in what has come. False once a message announces more than `keeperProtocol::kMostBytes`, from then
  /// on for good: nobody knows where the next one would begin.
  [[nodiscard]] bool feed(const char *bytes, qsizetype count);
  /// The next whole message, without its length; nothing if there is none yet.
  std::optional<QByteArray> next();
  /// True if a message has begun and is not whole.
  bool isInsideMessage() const { return !held.isEmpty(); }

 private:
  bool announcesTooMuch() const;

  QByteArray held;
  bool broken = false;
};
