#include "support/Checksum.h"

#include <array>

namespace {

constexpr std::array<quint32, 256> makeTable() {
  std::array<quint32, 256> table{};
  for (quint32 index = 0; index < table.size(); ++index) {
    quint32 remainder = index;
    for (int bit = 0; bit < 8; ++bit) remainder = (remainder >> 1) ^ (remainder & 1 ? 0xEDB88320u : 0u);
    table[index] = remainder;
  }
  return table;
}

constexpr std::array<quint32, 256> kTable = makeTable();

}  // namespace

quint32 CRC(QByteArrayView bytes) {
  quint32 sum = 0;
  // Values are stored with lengths of 32 bits, so longer data counts modulo that.
  const auto length = qsizetype(quint32(bytes.size()));
  for (qsizetype index = 0; index < length; ++index) {
    sum = (sum >> 8) ^ kTable[(sum & 255) ^ quint8(bytes[index])];
  }
  return sum;
}
