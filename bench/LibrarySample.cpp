#include "bench/LibrarySample.h"

#include <random>

namespace {

constexpr const char *kWords[] = {"Amber",  "Broken",  "Candle",  "Distant", "Evening", "Faded",
                                  "Golden", "Harbour", "Island",  "Jasper",  "Kites",   "Lantern",
                                  "Mirror", "Night",   "Orchard", "Paper",   "Quiet",   "River",
                                  "Silver", "Thunder", "Umber",   "Valley",  "Winter",  "Yonder"};
constexpr const char *kGenres[] = {"Rock",    "Jazz", "Electronic", "Classical",
                                   "R&#38;B", "Folk", "Soundtrack"};

class SampleWriter {
 public:
  QByteArray out;

  void header(int tracks) {
    out.reserve(qsizetype(tracks) * 1700 + 4096);
    out +=
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple Computer//DTD PLIST "
        "1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n<dict>\n"
        "\t<key>Major Version</key><integer>1</integer>\n\t<key>Date</key><date>2021-05-01T10:11:12Z</date>\n"
        "\t<key>Library Persistent "
        "ID</key><string>0123456789ABCDEF</string>\n\t<key>Tracks</key>\n\t<dict>\n";
  }

  void track(int number) {
    if (number % 11 == 0) newAlbum();
    const QByteArray name = words(3);
    const QByteArray id = QByteArray::number(1001 + 2 * number);
    out += "\t\t<key>" + id + "</key>\n\t\t<dict>\n";
    integer("Track ID", 1001 + 2 * number);
    integer("Size", 3000000 + qint64(random() % 9000000));
    integer("Total Time", 90000 + qint64(random() % 400000));
    integer("Disc Number", 1);
    integer("Disc Count", 1);
    integer("Track Number", 1 + number % 11);
    integer("Track Count", 11);
    integer("Year", year);
    date("Date Modified");
    date("Date Added");
    integer("Bit Rate", 256);
    integer("Sample Rate", 44100);
    if (random() % 3) {
      integer("Play Count", 1 + qint64(random() % 50));
      integer("Play Date", 3500000000 + qint64(random() % 200000000));
      date("Play Date UTC");
    }
    if (random() % 4 == 0) integer("Rating", 20 * qint64(random() % 6));
    integer("Artwork Count", 1);
    string("Persistent ID",
           QByteArray::number(quint64(random()) << 32 | random(), 16).toUpper().rightJustified(16, '0'));
    string("Track Type", "File");
    integer("File Folder Count", 5);
    integer("Library Folder Count", 1);
    string("Name", name);
    string("Artist", artist);
    string("Album Artist", artist);
    string("Composer", composer);
    string("Album", album);
    string("Genre", genre);
    string("Kind", number % 5 ? "Purchased AAC audio file" : "MPEG audio file");
    string("Sort Name", name);
    string("Sort Artist", artist);
    QByteArray file = "file:///Users/listener/Music/iTunes/iTunes%20Media/Music/" + artist + "/" + album +
                      "/" + QByteArray::number(1 + number % 11) + "%20" + name + ".m4a";
    string("Location", file.replace(' ', "%20"));
    out += "\t\t</dict>\n";
  }

  void playlist(int tracks) {
    out +=
        "\t</dict>\n\t<key>Playlists</key>\n\t<array>\n\t\t<dict>\n\t\t\t<key>Name</key><string>Library</"
        "string>\n\t\t\t<key>Master</key><true/>\n\t\t\t<key>All Items</key><true/>\n"
        "\t\t\t<key>Playlist Items</key>\n\t\t\t<array>\n";
    for (int number = 0; number < tracks; ++number) {
      out += "\t\t\t\t<dict>\n\t\t\t\t\t<key>Track ID</key><integer>" +
             QByteArray::number(1001 + 2 * number) + "</integer>\n\t\t\t\t</dict>\n";
    }
    out += "\t\t\t</array>\n\t\t</dict>\n\t</array>\n</dict>\n</plist>\n";
  }

 private:
  quint32 random() { return quint32(engine()); }

  QByteArray words(int count) {
    QByteArray text;
    for (int word = 0; word < count; ++word)
      text += QByteArray(word ? " " : "") + kWords[random() % std::size(kWords)];
    return random() % 12 ? text : text + " caf\xC3\xA9";
  }

  void newAlbum() {
    artist = "The " + words(2);
    album = words(2) + " (Deluxe Edition)";
    composer = words(2);
    genre = kGenres[random() % std::size(kGenres)];
    year = 1960 + random() % 60;
  }

  void element(const char *key, const char *tag, const QByteArray &text) {
    out.append("\t\t\t<key>").append(key).append("</key><").append(tag).append('>').append(text);
    out.append("</").append(tag).append(">\n");
  }
  void integer(const char *key, qint64 number) { element(key, "integer", QByteArray::number(number)); }
  void string(const char *key, const QByteArray &text) { element(key, "string", text); }
  void date(const char *key) {
    char text[24];
    qsnprintf(text, sizeof text, "20%02u-%02u-%02uT%02u:%02u:%02uZ", random() % 22, 1 + random() % 12,
              1 + random() % 28, random() % 24, random() % 60, random() % 60);
    element(key, "date", text);
  }

  std::mt19937 engine{20210501};
  QByteArray artist, album, composer, genre;
  quint32 year = 0;
};

}  // namespace

QByteArray librarySample(int tracks) {
  SampleWriter writer;
  writer.header(tracks);
  for (int number = 0; number < tracks; ++number) writer.track(number);
  writer.playlist(tracks);
  return writer.out;
}
