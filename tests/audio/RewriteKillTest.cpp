#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>

#include "audio/FileRewriter.h"
#include "tests/audio/ID3Builder.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

constexpr int kRecord = 8, kRecords = 100000;
constexpr int kHeads[] = {3000, 3001, 700, 5000, 0, 300000, 20, 300001, 300000};

/// How many of the audio's numbered records a file still holds, at whatever places.
int recordsIn(const QByteArray &bytes) {
  std::vector<bool> seen(kRecords);
  for (qsizetype at = bytes.indexOf('\xA5'); at >= 0 && at + kRecord <= bytes.size();
       at = bytes.indexOf('\xA5', at + 1)) {
    const auto digit = [&](qsizetype index) { return quint32(quint8(bytes[at + index])); };
    const quint32 record = digit(5) << 16 | digit(6) << 8 | digit(7);
    if (record < kRecords && bytes.mid(at + 1, 4) == id3::number(record * 2654435761u, 4))
      seen[record] = true;
  }
  return int(std::count(seen.begin(), seen.end(), true));
}

/// Rewrites a file with one head after the other until the process ends.
[[noreturn]] void rewriteForever(const QString &path, const QByteArray &tail) {
  qint64 start = 0;
  for (size_t turn = 0;; ++turn) {
    const QByteArray head(kHeads[turn % std::size(kHeads)], 'h');
    FileRewriter file;
    if (!file.open(path) || !file.replaceAround(head, start, kRecord * kRecords, tail).isNull()) ::_exit(1);
    start = head.size();
  }
}

}  // namespace

using Rewriting = TestPlatform;

TEST_F(Rewriting, AKillAtAnyInstantCostsNoByteOfTheAudioAndNoTail) {
  const QByteArray song = id3::audio(kRecord * kRecords), tail = id3::block({{3, "Title"}});
  std::mt19937 random(7);
  for (int turn = 0; turn < 25; ++turn) {
    const QString path = writeFile(u"music/song.mp3"_qs, song + tail);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) rewriteForever(path, tail);
    ::usleep(2000 + random() % 20000);
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    const QByteArray left = readFile(path);
    ASSERT_EQ(recordsIn(left), kRecords);
    ASSERT_TRUE(left.endsWith(tail));
  }
}
