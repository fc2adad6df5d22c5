#pragma once

#include <QThreadStorage>
#include <atomic>
#include <functional>

#include "platform/LibraryFramework.h"
#include "platform/keeper/RecordItems.h"
#include "platform/keeper/StoreReader.h"

/// The keeper's library, read from its store without the keeper's help. Works whether a keeper runs or not,
/// and from the start: a store that does not stand yet is an empty library until `reloadData` finds it. Each
/// thread reads through a connection of its own. What the store says is never older than the last change that
/// the keeper has acknowledged.
class KeeperLibraryFramework : public LibraryFramework {
 public:
  /// The store of the user's keeper, wherever the keeper noted it; looked up anew at each `reloadData`.
  KeeperLibraryFramework() = default;
  /// The store of a folder.
  explicit KeeperLibraryFramework(const QString &folder) : fixedFolder(folder) {}
  KeeperLibraryFramework(const KeeperLibraryFramework &) = delete;
  ~KeeperLibraryFramework() override;

  /// What reads the first picture of a music file; without one no track has a picture's bytes. Before any
  /// other thread.
  void setPictureReader(std::function<QByteArray(const QString &path)> reader) {
    pictureOf = std::move(reader);
  }

  QString open() override;
  void reloadData() override;
  std::optional<Date> savedUntil() override;
  void beginSnapshot() override;
  void endSnapshot() override;
  QString problem() override;
  qsizetype mediaItemCount() override;
  bool visitMediaItems(const std::function<bool(const LibraryMediaItem &)> &visit) override;
  std::optional<LibraryMediaItem> mediaItem(quint64 persistentID) override;
  std::optional<std::vector<LibraryPlaylist>> allPlaylists() override;
  std::optional<std::set<quint64>> playlistsContaining(quint64 trackID) override;
  bool visitItems(quint64 playlistID, bool withLocations,
                  const std::function<bool(const LibraryPlaylistItem &)> &visit) override;
  std::optional<QString> mediaFolderLocation() override;
  std::optional<QString> musicFolderLocation() override;
  std::optional<bool> hasArtworkAvailable(quint64 persistentID) override;
  QByteArray artwork(quint64 persistentID) override;

 private:
  /// What one thread reads with.
  struct Seat {
    explicit Seat(const QString &path) : reader(path) {}
    StoreReader reader;
    quint64 generation = 0;
  };
  QString folder() const;
  Seat *seat();
  /// As `StoreReader::visit`; a store that does not stand yet has no rows.
  bool visit(const QString &sql, const QVariantList &values,
             const std::function<bool(const QSqlQuery &)> &row);
  /// The calling thread's reader; null if there is no store that can be read.
  StoreReader *reader();

  const QString fixedFolder;
  std::function<QByteArray(const QString &)> pictureOf;
  std::atomic<quint64> generation = 1;
  QThreadStorage<Seat *> seats;
};
