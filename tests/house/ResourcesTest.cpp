#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include "app/library/FileKinds.h"
#include "platform/Platform.h"
#include "platform/qt/IcuUnicode.h"
#include "platform/qt/LibplistPropertyList.h"
#include "scanners/InconNameController.h"
#include "support/StringTable.h"
#include "tests/house/SourceTree.h"
#include "text/Characters.h"
#include "text/Simplified.h"
#include "values/Keys.h"

// The tables that people edit by hand: what they promise to the code, and what the code asks of them.
namespace {

const QString kRoot = QString::fromUtf8(TALLYFEN_SOURCE_FOLDER);

QByteArray bytesOf(const QString &path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

StringTable table(const QString &name) {
  QStringList problems;
  const QByteArray bytes = bytesOf(kRoot + QStringLiteral("/resources/strings/en/%1.strings").arg(name));
  StringTable read = StringTable::parse(bytes, &problems);
  EXPECT_TRUE(problems.isEmpty()) << problems.join(u'\n').toStdString();
  EXPECT_FALSE(read.keys().isEmpty());
  return read;
}

Dictionary resources() {
  QString error;
  const Value root =
      LibplistPropertyList().parse(bytesOf(kRoot + QStringLiteral("/resources/resources.plist")), &error);
  EXPECT_EQ(error, QString());
  return root.toDictionary();
}

// The keys that the sources ask for by a whole literal, each with a file that does.
QHash<QString, QString> keysAskedFor(const QString &function) {
  const QRegularExpression call(function + QStringLiteral("\\(\\s*QStringLiteral\\(\"([^\"]+)\"\\)\\s*[,)]"));
  QHash<QString, QString> asked;
  for (const SourceFile &source : readSourceTree(kRoot)) {
    if (source.path.startsWith(u"tests/")) continue;
    const QString text = QString::fromUtf8(bytesOf(kRoot + u'/' + source.path));
    for (auto matches = call.globalMatch(text); matches.hasNext();)
      asked.insert(matches.next().captured(1), source.path);
  }
  return asked;
}

}  // namespace

TEST(StringTables, HaveEveryTextThatTheSourcesAskFor) {
  const StringTable texts = table(QStringLiteral("Localizable"));
  const QHash<QString, QString> asked = keysAskedFor(QStringLiteral("localizedMessage"));
  EXPECT_GT(asked.size(), 10);
  for (auto key = asked.begin(); key != asked.end(); ++key) {
    EXPECT_FALSE(texts.text(key.key()).isNull()) << key.key().toStdString() << " in " << key->toStdString();
  }
  table(QStringLiteral("MainMenu"));
}

TEST(StringTables, WriteThePlaceOfTheMusicApplicationAsItIsReplaced) {
  const StringTable texts = table(QStringLiteral("Localizable"));
  for (const QString &key : texts.keys()) {
    QString text = texts.text(key);
    text.remove(QStringLiteral("[MUSICAPPNAME]"));
    EXPECT_FALSE(text.contains(u'[') || text.contains(u']')) << key.toStdString();
  }
}

TEST(Resources, SimplifiersReplaceTextByTextAndNeverByNothing) {
  const Dictionary simplifiers = resources().value(keys::simplifiers).toDictionary();
  EXPECT_GT(simplifiers.size(), 50);
  for (const DictionaryEntry &entry : simplifiers) {
    const QString key = entry.key.text(), value = entry.value.toText();
    EXPECT_FALSE(key.isEmpty() || value.isEmpty()) << key.toStdString();
    // A blank that a key takes from its neighbour comes back, or the next word is not met.
    EXPECT_TRUE(!key.startsWith(u' ') || value.startsWith(u' ')) << key.toStdString();
    EXPECT_TRUE(!key.endsWith(u' ') || value.endsWith(u' ')) << key.toStdString();
  }
}

TEST(Resources, NoKindOfSoundIsDroppedAndAllOthersAre) {
  const Dictionary tables = resources();
  const auto isDropped = [&](const QString &kind) {
    for (const Value &whole : tables.value(keys::ignoreKinds).toArray()) {
      if (whole.toText() == kind) return true;
    }
    for (const Value &part : tables.value(keys::ignoreKindSubstrings).toArray()) {
      if (kind.contains(part.toText())) return true;
    }
    return false;
  };
  const char *const kept =
      "MPEG audio file|AAC audio file|Purchased AAC audio file|Protected AAC audio file|Matched AAC audio "
      "file|Apple Lossless audio file|Apple Music AAC audio file|AIFF audio file|WAV audio file|Audible "
      "file|QuickTime audio file|MPEG-Audiodatei|Fichier audio MPEG|Fichier audio Apple Lossless|Archivo de "
      "audio AAC";
  const char *const dropped =
      "MPEG-4 video file|Purchased MPEG-4 video file|QuickTime movie file|MPEG-4-Videodatei|PDF "
      "document|Internet audio stream|MPEG audio stream|Ringtone|Book|Protected book|iTunes LP|iPhone/iPod "
      "touch app|iPad app|ePub-Dokument";
  for (const QString &kind : QString::fromUtf8(kept).split(u'|'))
    EXPECT_FALSE(isDropped(kind)) << kind.toStdString();
  for (const QString &kind : QString::fromUtf8(dropped).split(u'|'))
    EXPECT_TRUE(isDropped(kind)) << kind.toStdString();
}

namespace {

// The names of the tables, simplified as in a scan with plurals ignored or not.
class OddNames : public testing::TestWithParam<bool> {
 protected:
  OddNames() {
    Platform services;
    services.unicode = &unicode;
    setPlatform(services);
    setSimplifiersDictionaryRemoveTrailingS(tables.value(keys::simplifiers).toDictionary(), GetParam());
  }
  ~OddNames() override {
    clearSimplifiers();
    setPlatform({});
  }

  // As people and players write a name who do not care for its capitals.
  static QStringList misspellingsOf(const QString &name) {
    QStringList words = capitalizedString(name).split(u' ');
    for (qsizetype i = 1; i + 1 < words.size(); ++i) {
      if (InconNameController::uncapitalizedWords().contains(words[i].toLower()))
        words[i] = words[i].toLower();
    }
    QStringList spellings = {name.toLower(), name.toUpper(), capitalizedString(name), words.join(u' ')};
    spellings.removeAll(name);
    return spellings;
  }

  // Names of signs alone are met by themselves only.
  static bool isOfSigns(const QString &name) {
    return std::none_of(name.begin(), name.end(), [](QChar unit) { return unit.isLetterOrNumber(); });
  }

  // The spelling that wins without the tables, the right one first and so the last to win a tie.
  static QString chosenWithoutTables(const QString &name) {
    const Array songs = Array::make();
    for (const QString &spelling : QStringList(name) + misspellingsOf(name)) {
      const Dictionary song = Dictionary::make();
      song.set(keys::Album, spelling);
      songs.append(song);
    }
    const Dictionary row = Dictionary::make();
    row.set(keys::inconSongs, songs);
    return InconNameController()
        .automaticallyChoosePreferredForDictionaryComparisonSelector(row, NameKeyMethod::simplifying())
        .value_or(QString());
  }

  // Fails on a name that is no text, that the rules get right, that stands twice or out of order.
  static void checkNames(const Array &names) {
    QSet<QString> seen;
    QString last;
    for (const Value &value : names) {
      ASSERT_TRUE(value.isText() && !value.toText().isEmpty());
      const QString &name = value.toText();
      const QString key = simplified(name);
      EXPECT_FALSE(seen.contains(key)) << name.toStdString() << " stands twice";
      EXPECT_TRUE(GetParam() || last < key) << name.toStdString() << " is not in its place";
      EXPECT_TRUE(isOfSigns(name) || chosenWithoutTables(name) != name)
          << name.toStdString() << " needs no entry";
      for (const QString &spelling : misspellingsOf(name))
        EXPECT_TRUE(isOfSigns(name) || simplified(spelling) == key)
            << spelling.toStdString() << " is not met";
      seen.insert(key);
      last = key;
    }
  }

  IcuUnicode unicode;
  const Dictionary tables = resources();
};

}  // namespace

TEST_P(OddNames, AreOnlyThoseThatTheRulesGetWrongAndEachStandsOnce) {
  const Array &artists = tables.value(keys::oddNameArtists).toArray();
  EXPECT_GT(artists.size(), 300);
  checkNames(artists);
  QHash<QString, QString> spellings;
  for (const Value &artist : artists) spellings.insert(simplified(artist.toText()), artist.toText());

  const Array artistsOfAlbums = Array::make();
  QSet<QString> seen;
  for (const DictionaryEntry &entry : tables.value(keys::oddNameAlbums).toDictionary()) {
    const QString &artist = entry.key.text();
    const QString key = simplified(artist);
    EXPECT_FALSE(seen.contains(key)) << artist.toStdString() << " stands twice";
    EXPECT_EQ(spellings.value(key, artist), artist);
    EXPECT_FALSE(entry.value.toArray().isEmpty()) << artist.toStdString();
    checkNames(entry.value.toArray());
    seen.insert(key);
  }
  EXPECT_GT(seen.size(), 50);
}

TEST_P(OddNames, AreChosenFromTheirMisspellings) {
  InconNameController names;
  names.setResources(tables);
  for (const Value &artist : tables.value(keys::oddNameArtists).toArray()) {
    const Dictionary song = Dictionary::make(), row = Dictionary::make();
    const Array songs = Array::make();
    song.set(keys::Artist, capitalizedString(artist.toText()));
    songs.append(song);
    row.set(keys::inconType, QStringLiteral("RKIsArtistMatched"));
    row.set(keys::inconSongs, songs);
    names.automaticallyChoosePreferredForDictionaryComparisonSelector(row, NameKeyMethod::simplifying());
    EXPECT_EQ(row.value(keys::inconPref).toText().toStdString(), artist.toText().toStdString());
  }
}

INSTANTIATE_TEST_SUITE_P(PluralsIgnoredOrNot, OddNames, testing::Bool());

TEST(Resources, KindsHaveTheNumbersThatTheMarksCountOn) {
  const Dictionary table = resources().value(keys::kinds).toDictionary();
  QString order;
  for (const DictionaryEntry &entry : table) {
    order += entry.key.text();
    EXPECT_TRUE(entry.value.isText() || !entry.value.toArray().isEmpty()) << entry.key.text().toStdString();
    for (const Value &piece : entry.value.toArray()) EXPECT_TRUE(piece.isText());
  }
  EXPECT_EQ(order, QStringLiteral("012345"));

  const FileKinds kinds(table);
  const struct {
    const char *kind;
    int number;
    const char *piece;
  } cases[] = {
      {"AAC audio file", 0, "AAC"},
      {"Purchased AAC audio file", 0, "AAC"},
      {"Matched AAC audio file", 0, "AAC"},
      {"AAC-Audiodatei", 0, "AAC"},
      {"Fichier audio AAC", 0, "AAC"},
      {"MPEG-4 audio file", 0, "MPEG-4"},
      {"MPEG audio file", 1, "MPEG"},
      {"MPEG-Audiodatei", 1, "MPEG"},
      {"Fichier audio MPEG", 1, "MPEG"},
      {"Apple Lossless audio file", 2, "Apple Lossless"},
      {"Apple Lossless-Audiodatei", 2, "Apple Lossless"},
      {"AIFF audio file", 3, "AIFF"},
      {"Protected AAC audio file", 4, "Protected AAC"},
      {"Geschützte AAC-Audiodatei", 4, "Geschützte AAC"},
      {"Fichier audio AAC protégé", 4, "AAC protégé"},
      {"Archivo de audio AAC protegido", 4, "AAC protegido"},
      {"保護された AAC オーディオファイル", 4, "保護された AAC"},
      {"Apple Music AAC audio file", 4, "Apple Music"},
      {"Protected MPEG-4 video file", 4, "Protected MPEG-4"},
      {"WAV audio file", 5, "WAV"},
      {"Audible file", -1, ""},
      {"QuickTime movie file", -1, ""},
      {"Internet audio stream", -1, ""},
  };
  for (const auto &expected : cases) {
    const QString kind = QString::fromUtf8(expected.kind);
    EXPECT_EQ(kinds.numberOf(kind), expected.number) << expected.kind;
    EXPECT_EQ(kinds.matchOf(kind).value_or(FileKinds::Match()).piece.toStdString(), expected.piece);
  }
}
