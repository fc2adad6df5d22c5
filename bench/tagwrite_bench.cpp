// Writing a title into an MP3 of 5 MB, beside a bare copy of the same file.

#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

#include "audio/tags/MP3InfoTag.h"

namespace {

constexpr qsizetype kAudio = 5 * 1000 * 1000;

QString song(const QTemporaryDir &folder) {
  const QString path = folder.filePath(QStringLiteral("song.mp3"));
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return {};
  for (qsizetype written = 0; written < kAudio; written += 5000)
    file.write(QByteArray(5000, char(written / 5000)));
  return path;
}

void bareCopy(benchmark::State &state) {
  const QTemporaryDir folder;
  const QString path = song(folder), other = folder.filePath(QStringLiteral("copy.mp3"));
  for (auto _ : state) {
    QFile::remove(other);
    if (!QFile::copy(path, other)) state.SkipWithError("no copy");
  }
  state.SetBytesProcessed(state.iterations() * kAudio);
}
BENCHMARK(bareCopy)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Titles of two lengths in turn: the audio moves up and down, or stays for one length.
void writeTitle(benchmark::State &state) {
  const QTemporaryDir folder;
  const QString path = song(folder);
  qsizetype longer = 0;
  for (auto _ : state) {
    longer = state.range(0) - longer;
    const auto tag = MP3InfoTag::tagWithMPEGFile(path);
    tag->setTitle(QString(20 + longer, u't'));
    if (!tag->modifySongFileAtPathError(path, nullptr)) state.SkipWithError("no title");
  }
  state.SetBytesProcessed(state.iterations() * kAudio);
}
BENCHMARK(writeTitle)
    ->ArgName("moved")
    ->Arg(0)
    ->Arg(5)
    ->Arg(500'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
