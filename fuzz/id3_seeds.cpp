// Writes the seeds of the ID3 targets: id3_seeds FOLDER.

#include <QDir>
#include <QFile>

#include "tests/audio/ID3Builder.h"

using id3::bytes;
using id3::frame22;
using id3::frame23;
using id3::frame24;

namespace {

const QByteArray kLyrics[] = {bytes("\0engabout\0la la"),
                              bytes("\1eng\xFF\xFE"
                                    "d\0\0\0\xFF\xFEl\0a\0\0\0"),
                              bytes("\2deu\xFE\xFF\0d\0\0\xFE\xFF\0l\0a"), bytes("\3eng\0la")};
const QByteArray kTexts[] = {bytes("\0Title\0More\0"),
                             bytes("\1\xFF\xFET\0\0\0\xFE\xFF\0U\0\0"),
                             bytes("\2\0T\0U"),
                             bytes("\3T\xC3\xA9"),
                             "Title",
                             bytes("\x1FTitle")};
const QByteArray kPictures[] = {id3::picture("image/png", 3, "cover", "\x89PNGdata"),
                                id3::picture("PNG", 3, "", "\x89PNGdata"),
                                id3::picture("", 0, "", "\xFF\xD8\xFF\xE0"),
                                bytes("\1image/jpeg\0\3\xFF\xFE"
                                      "c\0\0\0data"),
                                bytes("\0PNG\3\0data"),
                                bytes("\0JPG\3cover\0data")};

class Seeds {
 public:
  explicit Seeds(const QString &root) : folder(root) {}

  void add(const char *target, const QByteArray &seed) {
    const QString path = folder + u'/' + QString::fromLatin1(target);
    QDir().mkpath(path);
    QFile file(path + QStringLiteral("/seed%1").arg(count++));
    isWhole = file.open(QIODevice::WriteOnly) && file.write(seed) == seed.size() && isWhole;
  }
  bool areWritten() const { return isWhole; }

 private:
  QString folder;
  int count = 0;
  bool isWhole = true;
};

void addTags(Seeds &seeds) {
  using Make = QByteArray (*)(const QByteArray &, const QByteArray &);
  const Make plain = [](const QByteArray &id, const QByteArray &body) { return frame23(id, body); };
  const Make safe = [](const QByteArray &id, const QByteArray &body) { return frame24(id, body); };
  for (const Make frame : {plain, safe}) {
    QByteArray frames = frame("TDRC", bytes("\0"
                                            "1999")) +
                        frame("TRCK", bytes("\0"
                                            "3/4")) +
                        frame("TCON", bytes("\0(17)A/A"));
    for (const QByteArray &text : kTexts) frames += frame("TIT2", text);
    for (const QByteArray &lyrics : kLyrics) frames += frame("USLT", lyrics);
    for (const QByteArray &picture : kPictures) frames += frame("APIC", picture);
    frames += frame("PRIV", QByteArray(300, 'x')) + frame("TCMP", bytes("\0"
                                                                        "1"));
    for (const int major : {3, 4}) {
      seeds.add("id3v2", id3::tag(major, frames + QByteArray(20, '\0')));
      seeds.add("id3v2", id3::tag(major, bytes("\0\0\0\6\0\0\0\0\0\0") + frames, 0xC0));
    }
  }
  seeds.add("id3v2", id3::tag(4, bytes("TIT2\0\0\0\5\0\1\0\0\0\5\0Abcd") + frame24("TALB", bytes("\0B"))));
  QByteArray frames = frame22("TYE", bytes("\0"
                                           "1999")) +
                      frame22("TRK", bytes("\0"
                                           "3/4")) +
                      frame22("XYZ", "abc");
  for (const QByteArray &text : kTexts) frames += frame22("TT2", text);
  for (const QByteArray &lyrics : kLyrics) frames += frame22("ULT", lyrics);
  for (const QByteArray &picture : kPictures) frames += frame22("PIC", picture);
  seeds.add("id3v2", id3::tag(2, frames));
}

}  // namespace

int main(int count, char **arguments) {
  if (count != 2) return 2;
  Seeds seeds(QString::fromLocal8Bit(arguments[1]));
  addTags(seeds);
  seeds.add(
      "id3v1",
      id3::block(
          {{3, "Title"}, {33, "Caf\xC3\xA9"}, {63, "Caf\xE9"}, {93, "1999"}, {97, "Note"}, {126, "\7"}}));
  seeds.add("id3v1", id3::block({{3, QByteArray(30, 'a')}, {97, QByteArray(30, 'b')}}));
  for (const QByteArray &text : kTexts) seeds.add("id3text", bytes("\1\0\x0E") + text);
  for (const QByteArray &lyrics : kLyrics) seeds.add("id3text", bytes("\1\0\x10") + lyrics);
  for (const QByteArray &picture : kPictures) seeds.add("picture", picture);
  return seeds.areWritten() ? 0 : 1;
}
