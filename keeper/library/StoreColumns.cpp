#include "keeper/library/StoreColumns.h"

#include "platform/FileAddress.h"
#include "platform/keeper/StoreSchema.h"
#include "values/Keys.h"
#include "values/PersistentID.h"

using namespace storeSchema;

namespace {

QString pathOf(const Dictionary &track) {
  const QString &address = track.value(keys::Location).toText();
  if (!address.startsWith(QStringLiteral("file:"))) return {};
  return pathOfFileAddress(address);
}

}  // namespace

TrackColumns TrackColumns::of(const Dictionary &track) {
  TrackColumns columns;
  columns.name = foldedText(track.value(keys::Name).toText());
  columns.artist = foldedText(track.value(keys::Artist).toText());
  columns.location = pathOf(track);
  const QString &type = track.value(keys::TrackType).toText();
  if (type == QStringLiteral("URL"))
    columns.flags |= kIsAddress;
  else if (type == QStringLiteral("Remote"))
    columns.flags |= kIsRemote;
  else if (type == QStringLiteral("File") || !columns.location.isEmpty())
    columns.flags |= kHasFile;
  const std::pair<Key, int> truths[] = {
      {keys::Compilation, kCompilation}, {keys::Disabled, kDisabled}, {keys::HasVideo, kHasVideo},
      {keys::Podcast, kPodcast},         {keys::Loved, kLoved},       {keys::Disliked, kDisliked}};
  for (const auto &[key, flag] : truths) {
    if (track.value(key).toBool()) columns.flags |= flag;
  }
  return columns;
}

PlaylistColumns PlaylistColumns::of(const Dictionary &playlist) {
  PlaylistColumns columns;
  columns.name = playlist.value(keys::Name).toText();
  columns.parent = persistentIDOfText(playlist.value(keys::ParentPersistentID).toText());
  columns.distinguishedKind = playlist.value(keys::DistinguishedKind).toInteger();
  const std::pair<Key, int> truths[] = {{keys::Master, kMaster},
                                        {keys::Folder, kFolder},
                                        {keys::Genius, kGenius},
                                        {keys::GeniusMix, kGeniusMix},
                                        {keys::AllItems, kAllItems}};
  for (const auto &[key, flag] : truths) {
    if (playlist.value(key).toBool()) columns.flags |= flag;
  }
  if (playlist.contains(keys::SmartInfo)) columns.flags |= kSmart;
  if (playlist.contains(keys::Visible) && !playlist.value(keys::Visible).toBool()) columns.flags |= kHidden;
  return columns;
}

QString foldedText(const QString &text) {
  return text.toCaseFolded();
}

QVariant textOrNull(const QString &text) {
  return text.isEmpty() ? QVariant() : QVariant(text);
}

Dictionary withChanges(const Dictionary &record, const KeyChanges &changes, Key newKeysBefore,
                       const std::function<bool(Key)> &isFixed) {
  KeyChanges added;
  const Dictionary changed = record.copyMembers(true);
  for (const DictionaryEntry &change : changes) {
    if (isFixed(change.key)) continue;
    if (changed.contains(change.key))
      changed.set(change.key, change.value);
    else if (!change.value.isNull())
      added.push_back(change);
  }
  if (added.empty()) return changed;
  const Dictionary made = Dictionary::make();
  const auto addAll = [&] {
    for (const DictionaryEntry &entry : std::exchange(added, {})) made.set(entry.key, entry.value);
  };
  for (const DictionaryEntry &entry : changed) {
    if (entry.key == newKeysBefore) addAll();
    made.set(entry.key, entry.value);
  }
  addAll();
  return made;
}
