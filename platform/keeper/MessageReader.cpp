#include "platform/keeper/MessageReader.h"

#include "platform/keeper/KeeperProtocol.h"

bool MessageReader::feed(const char *bytes, qsizetype count) {
  if (broken) return false;
  held.append(bytes, count);
  broken = announcesTooMuch();
  return !broken;
}

std::optional<QByteArray> MessageReader::next() {
  if (broken || held.size() < 4) return std::nullopt;
  const qsizetype length = keeperProtocol::lengthOf(held.constData());
  if (held.size() - 4 < length) return std::nullopt;
  const QByteArray message = held.mid(4, length);
  held.remove(0, 4 + length);
  broken = announcesTooMuch();
  return message;
}

bool MessageReader::announcesTooMuch() const {
  return held.size() >= 4 && keeperProtocol::lengthOf(held.constData()) > keeperProtocol::kMostBytes;
}
