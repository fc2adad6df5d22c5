// Makes a music library to try Tallyfen on: demo-library DIR [--tracks N] [--no-media] [--seed S]
#include <QStringList>
#include <cstdio>

#include "tools/demo/LargeLibrary.h"

namespace {

constexpr char kUsage[] =
    "usage: demo-library DIR [--seed S]                         about 400 songs with real files\n"
    "       demo-library DIR --no-media [--tracks N] [--seed S] a library of N entries without files\n";

struct Options {
  QString home;
  int tracks = 0;
  bool noMedia = false;
  quint64 seed = 1;
};

std::optional<Options> readOptions(const QStringList &words) {
  Options options;
  bool understood = true;
  for (qsizetype i = 0; i < words.size() && understood; ++i) {
    const QString &word = words.at(i);
    if (word == u"--no-media") {
      options.noMedia = true;
    } else if (word == u"--tracks") {
      options.tracks = words.value(++i).toInt(&understood);
      understood = understood && options.tracks > 0 && options.tracks <= 10000000;
    } else if (word == u"--seed") {
      options.seed = words.value(++i).toULongLong(&understood);
    } else {
      understood = options.home.isEmpty() && !word.startsWith(u'-');
      options.home = word;
    }
  }
  if (!understood || options.home.isEmpty() || (options.tracks != 0 && !options.noMedia)) return std::nullopt;
  return options;
}

void print(const DemoSummary &summary, bool noMedia) {
  std::printf("Library: %s\n", qUtf8Printable(summary.libraryFile));
  std::printf("Tracks: %d, of which %d are no songs\n", summary.tracks, summary.droppedTracks);
  std::printf("Playlists: %d\n", summary.playlists);
  if (noMedia) {
    std::printf("Copies: %d\n", summary.duplicateRows);
    return;
  }
  std::printf("Song files: %d\n", summary.songFiles);
  std::printf("Duplicate groups: %d with %d songs\n", summary.duplicateGroups, summary.duplicateRows);
  std::printf("Names in several spellings: %d artists, %d albums\n", summary.inconsistentArtists,
              summary.inconsistentAlbums);
  std::printf("Missing tracks: %d\nOrphans: %d\n", summary.missingTracks, summary.orphans);
}

}  // namespace

int main(int argc, char **argv) {
  QStringList words;
  for (int i = 1; i < argc; ++i) words += QString::fromLocal8Bit(argv[i]);
  const std::optional<Options> options = readOptions(words);
  if (!options) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  const DemoSummary summary =
      options->noMedia
          ? makeLargeLibrary(options->home, options->tracks ? options->tracks : 400, options->seed)
          : makeDemoLibrary(options->home, options->seed);
  if (!summary.error.isEmpty()) {
    std::fprintf(stderr, "demo-library: %s\n", qUtf8Printable(summary.error));
    return 1;
  }
  print(summary, options->noMedia);
}
