#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "audio/ByteView.h"
#include "audio/FileRewriter.h"
#include "tests/audio/ID3Builder.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

/// So many bytes are still written before the process is gone; negative for no end.
qint64 bytesToLive = -1;

}  // namespace

/// Stands before the system's own for this whole test program: an end in the middle of a write.
extern "C" ssize_t pwrite(int descriptor, const void *bytes, size_t count, off_t offset) {
  if (bytesToLive >= 0) {
    count = std::min(count, size_t(bytesToLive));
    if (count == 0) ::_exit(0);
    bytesToLive -= qint64(count);
  }
  return ::syscall(SYS_pwrite64, descriptor, bytes, count, offset);
}

namespace {

constexpr int kRecord = 8, kRecords = 70000, kLength = kRecord * kRecords;

/// How many of the audio's numbered records a file still holds, at whatever places.
int recordsIn(const QByteArray &bytes) {
  const ByteView view{QByteArrayView(bytes)};
  std::vector<bool> seen(kRecords);
  for (qsizetype at = bytes.indexOf('\xA5'); at >= 0 && at + kRecord <= bytes.size();
       at = bytes.indexOf('\xA5', at + 1)) {
    const quint32 record = view.u24(at + 5);
    if (record < kRecords && view.u32(at + 1) == record * 2654435761u) seen[record] = true;
  }
  return int(std::count(seen.begin(), seen.end(), true));
}

}  // namespace

using Rewriting = TestPlatform;

TEST_F(Rewriting, AnEndAtAnyByteCostsNothingOfTheAudioAndNoTail) {
  const QByteArray song = id3::audio(kLength), tail = id3::block({{3, "Title"}});
  std::mt19937 random(7);
  const std::pair<int, int> heads[] = {{20, 21},     {0, 3000},    {3000, 20}, {20, 300000},
                                       {600000, 20}, {20, 600000}, {20, 20}};
  for (const auto &[before, after] : heads) {
    for (int turn = 0; turn < 12; ++turn) {
      const QString path = writeFile(u"music/song.mp3"_qs, QByteArray(before, 'o') + song + tail);
      const qint64 lives = turn == 0 ? 3'000'000 : random() % (turn < 3 ? 700 : 2 * kLength);
      const pid_t child = ::fork();
      ASSERT_GE(child, 0);
      if (child == 0) {
        bytesToLive = lives;
        FileRewriter file;
        const QByteArray head(after, 'n');
        ::_exit(file.open(path) && file.replaceAround(head, before, kLength, tail).isNull() ? 0 : 1);
      }
      int status = 0;
      ::waitpid(child, &status, 0);
      EXPECT_EQ(status, 0);
      const QByteArray left = readFile(path);
      EXPECT_TRUE(turn > 0 || left == QByteArray(after, 'n') + song + tail);
      ASSERT_EQ(recordsIn(left), kRecords) << before << " to " << after << " dead after " << lives;
      ASSERT_TRUE(left.endsWith(tail)) << before << " to " << after << " dead after " << lives;
    }
  }
}
