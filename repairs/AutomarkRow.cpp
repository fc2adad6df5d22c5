#include "repairs/AutomarkRow.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "values/Keys.h"

namespace {

constexpr qint32 kSmallest = std::numeric_limits<qint32>::min();
constexpr qint32 kLargest = std::numeric_limits<qint32>::max();
constexpr qint32 kFirstCountedYear = 1501;
const Value kAbsent;

qint32 wrapped(qint64 number) {
  return qint32(quint32(quint64(number)));
}

qint32 saturated(float number) {
  if (number >= 2147483648.0F) return kLargest;
  if (number < -2147483648.0F) return kSmallest;
  return qint32(number);
}

}  // namespace

/// Finds the field of a key by a look into a table that stays in the nearest memory: a row of thirty keys
/// costs a walk over them, instead of a search for each field.
class AutomarkRow::FieldTable {
 public:
  FieldTable() {
    const std::array<Key, kFieldCount> fields = {
        keys::Name,      keys::Artist,      keys::Album,        keys::AlbumArtist, keys::Composer,
        keys::Genre,     keys::TrackNumber, keys::TrackCount,   keys::Year,        keys::BPM,
        keys::Rating,    keys::AlbumRating, keys::ArtworkCount, keys::PlayCount,   keys::PlayDate,
        keys::BitRate,   keys::TotalTime,   keys::DateAdded,    keys::Kind,        keys::Path,
        keys::DupeGroup, keys::markInfo,    keys::markAudio};
    for (quint8 field = 0; field < kFieldCount; ++field) {
      size_t slot = fields[field].hash() % slots_.size();
      while (!slots_[slot].key.isAbsent()) slot = (slot + 1) % slots_.size();
      slots_[slot] = {fields[field], field};
    }
  }

  /// `kFieldCount` for a key that no field has.
  quint8 fieldOf(Key key) const {
    size_t slot = key.hash() % slots_.size();
    while (slots_[slot].key != key) {
      if (slots_[slot].key.isAbsent()) return kFieldCount;
      slot = (slot + 1) % slots_.size();
    }
    return slots_[slot].field;
  }

 private:
  struct Slot {
    Key key;
    quint8 field = kFieldCount;
  };
  std::array<Slot, 256> slots_;
};

AutomarkRow::AutomarkRow(const Dictionary &row) {
  static const FieldTable table;
  values.fill(&kAbsent);
  for (const DictionaryEntry &entry : row) {
    const quint8 field = table.fieldOf(entry.key);
    if (field != kFieldCount) values[field] = &entry.value;
  }
}

qint32 AutomarkRow::number(Field field) const {
  return wrapped(values[field]->toInteger());
}

qint32 AutomarkRow::filledFields() const {
  qint32 filled = 0;
  for (int field = 0; field < kCompletenessCount; ++field) {
    filled += field < kFirstNumber ? !text(Field(field)).isEmpty() : number(Field(field)) > 0;
  }
  return filled;
}

float AutomarkRow::timeAdded() const {
  const Date *date = values[DateAdded]->toDate();
  if (!date || std::isnan(date->seconds)) return 0.0F;
  // Far beyond 32 bits and well within single precision.
  constexpr double kFarAway = 1e15;
  // Single precision tells times apart by minutes only: tracks imported in one go count as added together.
  return std::trunc(float(std::clamp(date->seconds, -kFarAway, kFarAway)));
}

qint32 AutomarkRow::addedFirst() const {
  return saturated(1000000.0F - timeAdded());
}

qint32 AutomarkRow::addedLast() const {
  return saturated(timeAdded());
}

qint32 AutomarkRow::infoScore(qint32 criterion) const {
  switch (criterion) {
    case 0:
      return filledFields();
    case 1:
      return number(PlayCount);
    case 2:
      return number(PlayDate) == 0 ? kSmallest : number(PlayDate);
    case 3:
      return number(Year) < kFirstCountedYear ? kSmallest : 10000 - number(Year);
    case 4:
      return number(Year) < kFirstCountedYear ? kSmallest : number(Year);
    case 5:
      return addedFirst();
    case 6:
      return addedLast();
    case 7:
      return number(Rating);
    default:
      return 0;
  }
}

qint32 AutomarkRow::quality(qint32 fileKind) const {
  constexpr qint32 kAboveAnyBitRate = 5000, kOneStepBelow = 32;
  const bool isLossless = fileKind == 2 || fileKind == 3 || fileKind == 5;
  return wrapped(qint64(number(BitRate)) + (isLossless ? kAboveAnyBitRate : 0) -
                 (fileKind == 1 ? kOneStepBelow : 0));
}

qint32 AutomarkRow::audioScore(qint32 criterion, qint32 wantedBitRate, qint32 fileKind) const {
  const qint64 bitRate = number(BitRate);
  switch (criterion) {
    case 1:
      return wrapped(20000 - qint64(quality(fileKind)));
    case 2:
      return wrapped(qint64(number(Rating)) * 1000 + bitRate);
    case 3:
      return wrapped(number(TotalTime) / 10 + bitRate);
    case 4:
      return wrapped(bitRate >= wantedBitRate ? 5000 - (bitRate - wantedBitRate) : bitRate - wantedBitRate);
    case 5:
      return addedFirst();
    case 6:
      return addedLast();
    default:
      return quality(fileKind);
  }
}
