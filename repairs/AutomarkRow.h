#pragma once

#include <array>

#include "values/Value.h"

/// What the marks are chosen by of one row of a group, gathered in one pass over the row. Borrows from the
/// row: valid until the row changes. Numbers are read as signed 32-bit values that wrap, absent ones as 0.
class AutomarkRow {
 public:
  explicit AutomarkRow(const Dictionary &row);

  /// How well the row serves as the source of the information by one criterion of `preferInfoTypes`; 0 by an
  /// unknown one.
  qint32 infoScore(qint32 criterion) const;
  /// How well its file serves as the one to keep by `preferAudioData15`, before the preferred kind and the
  /// disk are asked. `fileKind` counts for quality alone.
  qint32 audioScore(qint32 criterion, qint32 wantedBitRate, qint32 fileKind) const;

  /// The number of the row's group.
  qint64 group() const { return values[DupeGroup]->toInteger(); }
  const Value &markInfo() const { return *values[MarkInfo]; }
  const Value &markAudio() const { return *values[MarkAudio]; }
  const QString &kind() const { return text(Kind); }
  const QString &path() const { return text(Path); }

 private:
  /// Texts, then numbers, first those that count for completeness; the places of their values in `values`.
  enum Field : quint8 {
    Name,
    Artist,
    Album,
    AlbumArtist,
    Composer,
    Genre,
    TrackNumber,
    TrackCount,
    Year,
    BPM,
    Rating,
    AlbumRating,
    ArtworkCount,
    PlayCount,
    PlayDate,
    BitRate,
    TotalTime,
    DateAdded,
    Kind,
    Path,
    DupeGroup,
    MarkInfo,
    MarkAudio,
    kFieldCount
  };
  static constexpr int kFirstNumber = TrackNumber;
  static constexpr int kCompletenessCount = PlayCount;
  class FieldTable;

  const QString &text(Field field) const { return values[field]->toText(); }
  qint32 number(Field field) const;
  qint32 filledFields() const;
  /// Seconds since the reference date in single precision, without a fraction; 0 without a date.
  float timeAdded() const;
  qint32 addedFirst() const;
  qint32 addedLast() const;
  qint32 quality(qint32 fileKind) const;

  std::array<const Value *, kFieldCount> values;
};
