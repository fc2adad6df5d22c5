#pragma once

#include "tests/fixtures/KeeperHost.h"
#include "tests/fixtures/TestPlatform.h"
#include "tools/demo/SongTags.h"

/// A keeper over a library of its own, and small real song files.
class ModelFixture : public TestPlatform {
 protected:
  struct Case {
    /// Statements inside the application's `tell` block.
    QString statements;
    QString result;
  };

  ModelFixture() : keeper(folder(u"music/iTunes"_qs)) {}
  /// Runs each on the same library, in order.
  void expectAll(const std::vector<Case> &cases);
  /// An MP3 file, or an M4A file by its name, of about so many seconds; its path.
  QString makeSong(const QString &relative, const SongTags &tags, int seconds = 2);
  static SongTags tagsOf(const QString &name, const QString &artist, const QString &album, int track);
  /// `POSIX file "…"` for a script.
  static QString file(const QString &path) { return u"(POSIX file \"%1\")"_qs.arg(path); }
  /// The relative paths of all files below a folder, sorted.
  QStringList filesBelow(const QString &relative) const;

  KeeperHost keeper;
};
