// No number in a file makes a reader ask for more memory than the file has bytes and a megabyte, and no crowd
// of small things makes it hold many times the file's bytes.

#include <malloc.h>

#include <atomic>
#include <cstdlib>

#include "audio/AudioInfoTag.h"
#include "audio/SongFile.h"
#include "audio/tags/MP3InfoTag.h"
#include "tests/audio/ID3Builder.h"
#include "tests/audio/MP4Builder.h"
#include "tests/fixtures/TestPlatform.h"

// The sanitizers have an allocator of their own.
#if defined(__GLIBC__) && !defined(TALLYFEN_SANITIZED)

namespace {

std::atomic<size_t> largest{0}, held{0}, mostHeld{0};

void *noted(void *memory, size_t asked) {
  if (asked > largest) largest = asked;
  held += malloc_usable_size(memory);
  if (held > mostHeld) mostHeld = held.load();
  return memory;
}

}  // namespace

extern "C" {
void *__libc_malloc(size_t);
void *__libc_realloc(void *, size_t);
void *__libc_calloc(size_t, size_t);
void __libc_free(void *);

void *malloc(size_t size) {
  return noted(__libc_malloc(size), size);
}
void *realloc(void *memory, size_t size) {
  held -= malloc_usable_size(memory);
  return noted(__libc_realloc(memory, size), size);
}
void *calloc(size_t count, size_t size) {
  return noted(__libc_calloc(count, size), count * size);
}
void free(void *memory) {
  held -= malloc_usable_size(memory);
  __libc_free(memory);
}
}

namespace {

class Allocation : public TestPlatform {
 protected:
  /// Reads a file, its facts and its pictures, and holds it against its size.
  void expectModest(const QString &path, size_t size) const {
    const size_t before = held;
    largest = 0;
    mostHeld = before;
    const auto song = SongFile::songWithPath(path);
    const AudioInfoTag *tag = song ? song->infotag() : nullptr;
    if (tag) (void)tag->numberOfArtworkBytes();
    EXPECT_LE(largest, size + (1 << 20));
    EXPECT_LE(mostHeld - before, 2 * size + (32 << 20));
  }
};

}  // namespace

TEST_F(Allocation, SizesThatLieAskForNoMoreThanTheFileHas) {
  QList<QByteArray> files;
  for (const quint32 size : {0U, 1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    const QByteArray lie = mp4::be(size), wideLie = mp4::be(1) + "mdat" + lie + lie;
    const QByteArray items = mp4::atom("covr", lie + "data" + mp4::be(13) + mp4::be(0) + "picture");
    files += mp4::fileType() + mp4::atom("moov", {mp4::movieHeader(1, 1), mp4::userData(items)}) + wideLie;
    files += mp4::fileType() +
             mp4::atom("moov", {mp4::track(mp4::atom("stsd", lie + lie), lie + "stco" + lie + lie)}) + lie +
             "mdat";
    for (const int major : {2, 3, 4}) {
      const QByteArray frame = (major == 2 ? "PIC" + lie.left(3) : "APIC" + lie + id3::bytes("\0\0"));
      files += id3::tag(major, frame + id3::picture("image/png", 3, "c", "\x89PNG")) + id3::audio();
      files += id3::tag(major, lie + frame, 0xC0) + id3::audio();
    }
    files += "ID3" + id3::bytes("\3\0\0") + lie + id3::audio();
  }
  files += mp4::free(0).repeated(200000);
  for (const QByteArray &bytes : files) {
    SCOPED_TRACE(bytes.left(80).toHex().constData());
    for (const QString &name : {u"music/a.mp3"_qs, u"music/a.m4a"_qs})
      expectModest(writeFile(name, bytes), size_t(bytes.size()));
  }
}

TEST_F(Allocation, CrowdsOfSmallThingsAreNoTagAndStayInTheirFile) {
  using id3::bytes, id3::frame22, id3::frame23;
  const auto many = [](const QByteArray &piece) { return piece.repeated(4'000'000 / piece.size()); };
  const QByteArray text = bytes("\0");
  const QByteArray tags[] = {
      id3::tag(2, many(frame22("XYZ", "a"))),
      id3::tag(3, many(frame23("PRIV", ""))),
      id3::tag(4, many(frame23("PRIV", ""))),
      id3::tag(4, many(frame23("APIC", bytes("\0a\0b\0")))),
      id3::tag(3, frame23("PRIV", many("x")) + many(frame23("TIT2", text + many(bytes("a\0")).left(90000)))),
      id3::tag(3, frame23("TIT2", text + many("a"))),
      id3::tag(3, frame23("USLT", text + "eng" + text + many("a"))),
      id3::tag(2, frame22("TT2", text + many("a"))),
      id3::tag(3, frame23("APIC", id3::picture(many("a"), 3, "", "x"))),
      id3::tag(3, frame23("APIC", id3::picture("image/png", 3, many("a"), "x"))),
      id3::tag(2, frame22("PIC", bytes("\0PNG\3") + many("a") + text))};
  for (const QByteArray &tag : tags) {
    SCOPED_TRACE(tag.left(40).toHex().constData());
    const QByteArray before = tag + id3::audio();
    const QString path = writeFile(u"music/a.mp3"_qs, before);
    expectModest(path, size_t(before.size()));
    MP3InfoTag title;
    title.setTitle(u"T"_qs);
    EXPECT_FALSE(title.modifySongFileAtPathError(path, nullptr));
    EXPECT_EQ(readFile(path), before);
  }
  const QByteArray genres =
      id3::tag(4, frame23("PRIV", many("x")) + id3::frame24("TCON", text + many("a/").left(1 << 20)));
  expectModest(writeFile(u"music/a.mp3"_qs, genres + id3::audio()), size_t(genres.size()));
}

#endif
