#include "tools/demo/DemoPlaylists.h"

#include "tools/demo/BigEndian.h"
#include "tools/demo/DemoKeys.h"

namespace {

// What makes a list smart: checked for matches while music changes, and a limit to 25 by play count.
QByteArray smartInfo() {
  QByteArray info = QByteArray::fromHex("0101010300000019");
  return info + QByteArray(104 - info.size(), '\0');
}

// One rule, "Play Count is greater than `above`".
QByteArray smartCriteria(quint32 above) {
  QByteArray criteria("SLst");
  appendBigEndian(criteria, quint32(0x00010001));
  appendBigEndian(criteria, quint32(1));
  criteria += QByteArray(124, '\0');
  appendBigEndian(criteria, quint32(0x16));
  appendBigEndian(criteria, quint32(0x00000010));
  criteria += QByteArray(44, '\0');
  appendBigEndian(criteria, quint32(0x44));
  for (int i = 0; i < 2; ++i) {
    appendBigEndian(criteria, quint64(above));
    appendBigEndian(criteria, quint64(0));
    appendBigEndian(criteria, quint64(1));
  }
  return criteria + QByteArray(20, '\0');
}

class PlaylistWriter {
 public:
  PlaylistWriter(LibraryXml &output, const DemoPlan &demo) : xml(output), plan(demo) {}

  void begin(const char16_t *name, quint64 parent = 0) {
    ++count;
    xml.beginDictionary();
    xml.text(keys::Name, QString::fromUtf16(name));
    xml.integer(demoKeys::PlaylistID, 10000 + count);
    xml.plain(keys::PlaylistPersistentID, persistentID(idOf(count)));
    if (parent != 0) xml.plain(demoKeys::ParentPersistentID, persistentID(parent));
  }

  template <class Test>
  void end(Test holds) {
    xml.boolean(demoKeys::AllItems, true);
    xml.beginArray(keys::PlaylistItems);
    for (const DemoTrack &track : plan.tracks) {
      for (int times = holds(track); times > 0; --times) writeItem(track.trackID);
    }
    xml.end();
    xml.end();
  }

  void writeItem(int trackID) {
    xml.beginDictionary();
    xml.integer(keys::TrackID, trackID);
    xml.end();
  }

  quint64 currentID() const { return idOf(count); }
  int playlists() const { return count; }

 private:
  static quint64 idOf(int number) { return 0xd0c5000000000000u + quint64(number) * 0x10001; }

  LibraryXml &xml;
  const DemoPlan &plan;
  int count = 0;
};

int isSong(const DemoTrack &track) {
  return track.bitRate != 0 && !track.path.endsWith(u".m4r") ? 1 : 0;
}

}  // namespace

int writeDemoPlaylists(LibraryXml &xml, const DemoPlan &plan) {
  xml.beginArray(keys::Playlists);
  PlaylistWriter lists(xml, plan);
  lists.begin(u"Library");
  xml.boolean(keys::Master, true);
  xml.boolean(demoKeys::Visible, false);
  lists.end([](const DemoTrack &) { return 1; });
  lists.begin(u"Music");
  xml.integer(demoKeys::DistinguishedKind, 4);
  xml.boolean(demoKeys::Music, true);
  lists.end(isSong);
  lists.begin(u"Movies");
  xml.integer(demoKeys::DistinguishedKind, 2);
  xml.boolean(demoKeys::Movies, true);
  lists.end([](const DemoTrack &track) { return track.hasVideo ? 1 : 0; });
  lists.begin(u"Podcasts");
  xml.integer(demoKeys::DistinguishedKind, 10);
  xml.boolean(demoKeys::Podcasts, true);
  lists.end([](const DemoTrack &track) { return track.isPodcast ? 1 : 0; });

  lists.begin(u"Moods");
  const quint64 folder = lists.currentID();
  xml.boolean(keys::Folder, true);
  lists.end([](const DemoTrack &track) { return isSong(track) * int(track.trackID % 5 < 2); });
  lists.begin(u"Quiet Evenings", folder);
  lists.end([](const DemoTrack &track) { return isSong(track) * int(track.trackID % 5 == 0); });
  lists.begin(u"Long Drives", folder);
  lists.end([](const DemoTrack &track) { return isSong(track) * int(track.trackID % 5 == 1); });

  // Everything of one title, all copies, and each song of one album twice.
  const QString copied = plan.tracks.front().tags.name;
  const QString twice = plan.tracks.front().tags.album;
  lists.begin(u"Copies & Repeats");
  lists.end([&](const DemoTrack &track) {
    return track.tags.name == copied ? 1 : isSong(track) * 2 * int(track.tags.album == twice);
  });
  lists.begin(u"Top Rated");
  lists.end([](const DemoTrack &track) { return track.rating == 100 ? 1 : 0; });
  lists.begin(u"An Empty List");
  lists.end([](const DemoTrack &) { return 0; });

  lists.begin(u"Often Played");
  xml.data(keys::SmartInfo, smartInfo());
  xml.data(demoKeys::SmartCriteria, smartCriteria(40));
  lists.end([](const DemoTrack &track) { return track.playCount > 40 ? 1 : 0; });
  lists.begin(u"Never Played");
  xml.data(keys::SmartInfo, smartInfo());
  xml.data(demoKeys::SmartCriteria, smartCriteria(0));
  lists.end([](const DemoTrack &track) { return isSong(track) * int(track.playCount == 0); });
  xml.end();
  return lists.playlists();
}

void writeMasterPlaylist(LibraryXml &xml, int firstID, int count) {
  static const DemoPlan nothing;
  xml.beginArray(keys::Playlists);
  PlaylistWriter lists(xml, nothing);
  lists.begin(u"Library");
  xml.boolean(keys::Master, true);
  xml.boolean(demoKeys::Visible, false);
  xml.boolean(demoKeys::AllItems, true);
  xml.beginArray(keys::PlaylistItems);
  for (int i = 0; i < count; ++i) lists.writeItem(firstID + i);
  xml.end();
  xml.end();
  xml.end();
}
