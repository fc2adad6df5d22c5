#include "tools/demo/Picture.h"

#include <zlib.h>

#include "tools/demo/BigEndian.h"

namespace {

void appendChunk(QByteArray &png, const char *type, const QByteArray &body) {
  QByteArray chunk(type, 4);
  chunk += body;
  appendBigEndian(png, quint32(body.size()));
  png += chunk;
  appendBigEndian(png,
                  quint32(crc32(0, reinterpret_cast<const Bytef *>(chunk.constData()), uInt(chunk.size()))));
}

}  // namespace

QByteArray makeCover(int side, quint32 ground, quint32 disc) {
  // Each row begins with its filter, 0 for none.
  QByteArray rows;
  for (int y = 0; y < side; ++y) {
    rows += '\0';
    for (int x = 0; x < side; ++x) {
      const int dx = 2 * x + 1 - side, dy = 2 * y + 1 - side;
      const int square = dx * dx + dy * dy;
      const bool onDisc = square * 16 < side * side * 9 && square * 16 > side * side / 4;
      const quint32 color = onDisc ? disc : ground;
      rows += char((color >> 16) & 0xff);
      rows += char((color >> 8) & 0xff);
      rows += char(color & 0xff);
    }
  }
  QByteArray header;
  appendBigEndian(header, quint32(side));
  appendBigEndian(header, quint32(side));
  header += QByteArray::fromHex("0802000000");  // 8 bits a channel, three channels, no interlace

  QByteArray png("\x89PNG\r\n\x1a\n", 8);
  appendChunk(png, "IHDR", header);
  appendChunk(png, "IDAT", qCompress(rows).mid(4));  // without the length that qCompress puts in front
  appendChunk(png, "IEND", {});
  return png;
}
