// No number in a file makes a reader ask for more memory than the file has bytes and a megabyte.

#include <atomic>
#include <cstdlib>

#include "audio/AudioInfoTag.h"
#include "audio/SongFile.h"
#include "tests/audio/ID3Builder.h"
#include "tests/audio/MP4Builder.h"
#include "tests/fixtures/TestPlatform.h"

// The sanitizers have an allocator of their own.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__)

namespace {

std::atomic<size_t> largest{0};

void note(size_t size) {
  if (size > largest) largest = size;
}

}  // namespace

extern "C" {
void *__libc_malloc(size_t);
void *__libc_realloc(void *, size_t);
void *__libc_calloc(size_t, size_t);

void *malloc(size_t size) {
  note(size);
  return __libc_malloc(size);
}
void *realloc(void *memory, size_t size) {
  note(size);
  return __libc_realloc(memory, size);
}
void *calloc(size_t count, size_t size) {
  note(count * size);
  return __libc_calloc(count, size);
}
}

using Allocation = TestPlatform;

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
    for (const QString &name : {u"music/a.mp3"_qs, u"music/a.m4a"_qs}) {
      const QString path = writeFile(name, bytes);
      largest = 0;
      const auto song = SongFile::songWithPath(path);
      const AudioInfoTag *tag = song ? song->infotag() : nullptr;
      if (tag) (void)tag->numberOfArtworkBytes();
      EXPECT_LE(largest, size_t(bytes.size()) + (1 << 20))
          << qPrintable(name) << bytes.left(80).toHex().data();
    }
  }
}

#endif
