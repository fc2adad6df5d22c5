#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include "platform/qt/LibplistPropertyList.h"
#include "support/StringTable.h"
#include "tests/house/SourceTree.h"
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
  const char *const kept[] = {"MPEG audio file",
                              "AAC audio file",
                              "Purchased AAC audio file",
                              "Protected AAC audio file",
                              "Matched AAC audio file",
                              "Apple Lossless audio file",
                              "Apple Music AAC audio file",
                              "AIFF audio file",
                              "WAV audio file",
                              "Audible file",
                              "QuickTime audio file",
                              "MPEG-Audiodatei",
                              "Fichier audio MPEG",
                              "Fichier audio Apple Lossless",
                              "Archivo de audio AAC"};
  const char *const dropped[] = {"MPEG-4 video file",
                                 "Purchased MPEG-4 video file",
                                 "QuickTime movie file",
                                 "MPEG-4-Videodatei",
                                 "PDF document",
                                 "Internet audio stream",
                                 "MPEG audio stream",
                                 "Ringtone",
                                 "Book",
                                 "Protected book",
                                 "iTunes LP",
                                 "iPhone/iPod touch app",
                                 "iPad app",
                                 "ePub-Dokument"};
  for (const char *kind : kept) EXPECT_FALSE(isDropped(QString::fromUtf8(kind))) << kind;
  for (const char *kind : dropped) EXPECT_TRUE(isDropped(QString::fromUtf8(kind))) << kind;
}
