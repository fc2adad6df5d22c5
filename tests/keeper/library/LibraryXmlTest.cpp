#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "keeper/library/LibraryExport.h"
#include "keeper/library/LibraryImport.h"
#include "keeper/library/LibrarySource.h"
#include "tests/keeper/library/StoreFixture.h"

namespace {

/// As the music application writes it, line by line.
const QByteArray kLibrary =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple Computer//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>Major Version</key><integer>1</integer>
	<key>Date</key><date>2019-03-02T10:11:12Z</date>
	<key>Show Content Ratings</key><true/>
	<key>Tracks</key>
	<dict>
		<key>42</key>
		<dict>
			<key>Track ID</key><integer>42</integer>
			<key>Name</key><string>A &#38; B &#60;c&#62; "d" caf)"
    "\xC3\xA9 \xE6\x9D\xB1\xF0\x9F\x8E\xB5"
    R"(</string>
			<key>Size</key><integer>5000000000</integer>
			<key>Play Date</key><integer>-3000000000</integer>
			<key>Volume</key><real>0.1</real>
			<key>Comments</key><string></string>
			<key>Unheard Of</key>
			<dict>
				<key>List</key>
				<array>
					<integer>1</integer>
					<string>x</string>
					<dict>
					</dict>
				</array>
			</dict>
			<key>Persistent ID</key><string>00000000000000FF</string>
			<key>Location</key><string>file:///Users/old/Music/Some%20One/Al%20bum/01%20S%C3%B6ng.mp3</string>
		</dict>
		<key>43</key>
		<dict>
			<key>Track ID</key><integer>43</integer>
			<key>Persistent ID</key><string>FFFFFFFFFFFFFFFE</string>
			<key>Compilation</key><false/>
		</dict>
	</dict>
	<key>Playlists</key>
	<array>
		<dict>
			<key>Name</key><string>Library</string>
			<key>Master</key><true/>
			<key>Playlist ID</key><integer>50</integer>
			<key>Playlist Persistent ID</key><string>0000000000000001</string>
			<key>Visible</key><false/>
			<key>Playlist Items</key>
			<array>
				<dict>
					<key>Track ID</key><integer>43</integer>
				</dict>
				<dict>
					<key>Track ID</key><integer>42</integer>
					<key>Odd</key><string>kept</string>
				</dict>
			</array>
		</dict>
		<dict>
			<key>Name</key><string>Smart</string>
			<key>Playlist ID</key><integer>51</integer>
			<key>Playlist Persistent ID</key><string>0000000000000002</string>
			<key>Smart Info</key>
			<data>
			AAECAwQFBgcICQoLDA0ODxAREhMUFRYXGBkaGxwdHh8gISIjJCUmJygpKiss
			LS4vMDE=
			</data>
		</dict>
		<dict>
			<key>Name</key><string>Empty</string>
			<key>Playlist ID</key><integer>52</integer>
			<key>Playlist Persistent ID</key><string>0000000000000003</string>
			<key>Playlist Items</key>
			<array>
			</array>
		</dict>
	</array>
	<key>Behind</key><string>all</string>
</dict>
</plist>
)";

const QString kXmlName = QStringLiteral("iTunes Music Library.xml");
const QString kKeptName = QStringLiteral("iTunes Music Library (before Music Keeper)%1.xml");

}  // namespace

class LibraryXml : public StoreFixture {
 protected:
  QString import(const QByteArray &bytes, const ImportOptions &options = {}) {
    LibraryImport import(store);
    const QString error = import.run(writeFile(QStringLiteral("old/Library.xml"), bytes), options);
    report = import.report();
    return error;
  }
  QString beside(const QString &name) const { return storeFolder() + u'/' + name; }

  ImportReport report;
};

TEST_F(LibraryXml, ALibraryGoesOutByteByByteAsItCameIn) {
  ASSERT_EQ(import(kLibrary), QString());
  EXPECT_EQ(report.tracks, 2);
  EXPECT_EQ(report.entries, 2);
  EXPECT_EQ(LibraryImport::importedFile(store), folder(QStringLiteral("old/Library.xml")));
  LibraryExport out(store);
  EXPECT_FALSE(out.isCurrent());
  ASSERT_EQ(out.run(), QString());
  EXPECT_EQ(readFile(out.usualPath()), kLibrary);
  EXPECT_TRUE(out.isCurrent());
  add(QStringLiteral("new"));
  EXPECT_FALSE(out.isCurrent());
}

TEST_F(LibraryXml, TextsThatNeedCareComeBackFromAnExport) {
  const TrackRow row = add(QStringLiteral("a\rb\nc\td &amp; \u2028 %1").arg(QChar(0xFFFF)));
  store.tracks().set(row, {{Key(u"A <key> & \u00e9"), QStringLiteral("x%1y").arg(QChar(1))},
                           {keys::lyrics, QString(QChar(0xDC00))}});
  LibraryExport out(store);
  ASSERT_EQ(out.run(), QString());
  ASSERT_EQ(LibraryImport(store).run(out.usualPath()), QString());
  const TrackRow back = store.tracks().at(0);
  EXPECT_EQ(nameOf(back), QStringLiteral("a\rb\nc\td &amp; \u2028 "));
  EXPECT_EQ(store.tracks().value(back, Key(u"A <key> & \u00e9")).toText(), QStringLiteral("xy"));
  EXPECT_EQ(store.tracks().value(back, keys::lyrics).toText(), QStringLiteral("?"));
  const QByteArray once = readFile(out.usualPath());
  ASSERT_EQ(out.run(), QString());
  EXPECT_EQ(readFile(out.usualPath()), once);
}

TEST_F(LibraryXml, ADisorderlyLibraryIsPutInOrder) {
  QByteArray bytes = kLibrary;
  bytes.replace("<key>Track ID</key><integer>43</integer>\n\t\t\t<key>Pers",
                "<key>Track ID</key><integer>42</integer>\n\t\t\t<key>Pers");
  bytes.replace("FFFFFFFFFFFFFFFE", "ff");
  bytes.replace("0000000000000002", "no number");
  bytes.replace("<key>Master</key><true/>", "");
  bytes.replace("<integer>42</integer>\n\t\t\t\t\t<key>Odd", "<integer>7</integer>\n\t\t\t\t\t<key>Odd");
  ASSERT_EQ(import(bytes), QString());
  EXPECT_EQ(report.renumbered, 1);
  EXPECT_EQ(report.withDoubledID, 1);
  EXPECT_EQ(report.withoutID, 2) << "one of the file's playlists, and the one of all tracks";
  EXPECT_EQ(report.droppedItems, 1);
  EXPECT_EQ(report.playlists, 4);
  const TrackRow second = store.tracks().withDatabaseID(43);
  EXPECT_EQ(store.tracks().indexOf(second), 1);
  EXPECT_NE(store.tracks().persistentID(second), 0xFFu);
  EXPECT_EQ(store.entries().tracks(store.playlists().master()), store.tracks().rows());
  EXPECT_EQ(store.integrityReport(), QString());
}

TEST_F(LibraryXml, WhatCannotBeImportedLeavesTheStoreAndWhatItReplacesIsKept) {
  add(QStringLiteral("mine"));
  EXPECT_TRUE(
      LibraryImport(store).run(folder(QStringLiteral("none.xml"))).startsWith(QStringLiteral("cannot")));
  EXPECT_TRUE(
      import("<plist><dict><key>a</key><true/></dict></plist>").contains(QStringLiteral("no library")));
  ImportOptions options;
  options.onProgress = [](const ImportProgress &progress) { return progress.done == 0; };
  EXPECT_TRUE(import(kLibrary, options).contains(QStringLiteral("cancelled")));
  EXPECT_EQ(namesIn(store.playlists().master()), QStringLiteral("mine"));
  ASSERT_EQ(import(kLibrary), QString());
  EXPECT_EQ(store.tracks().count(), 2);
  EXPECT_TRUE(QFile::exists(beside(QStringLiteral("Music Library (before import).musiclibrary"))));
  // A file that ends in the middle gives what can be read, and says so.
  ASSERT_EQ(import(kLibrary.first(kLibrary.indexOf("<key>Playlists"))), QString());
  EXPECT_FALSE(report.damage.isEmpty());
  EXPECT_EQ(store.tracks().count(), 2);
}

TEST_F(LibraryXml, AFileOfAnotherProgramIsKeptBesideEachTime) {
  LibraryExport out(store);
  writeFile(out.usualPath(), "first");
  ASSERT_EQ(out.run(), QString());
  EXPECT_EQ(readFile(beside(kKeptName.arg(QString()))), "first");
  ASSERT_EQ(out.run(), QString());
  writeFile(out.usualPath(), "second");
  ASSERT_EQ(out.run(), QString());
  EXPECT_EQ(readFile(beside(kKeptName.arg(QString()))), "first");
  EXPECT_EQ(readFile(beside(kKeptName.arg(QStringLiteral(" 2")))), "second");
  EXPECT_EQ(QDir(storeFolder()).entryList({QStringLiteral("*.xml*")}, QDir::Files | QDir::Hidden).size(), 3);
  EXPECT_TRUE(out.run(folder(QStringLiteral("none/x.xml"))).startsWith(QStringLiteral("cannot write")));
}

TEST_F(LibraryXml, TheNewestLibraryIsFoundWhateverItsAge) {
  EXPECT_EQ(newestLibraryFile(), QString());
  const auto place = [&](const char *path, const char *bytes, int year) {
    const QString made = writeFile(QStringLiteral("home/") + QString::fromLatin1(path), bytes);
    QFile file(made);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_TRUE(file.setFileTime(QDate(year, 1, 1).startOfDay(), QFileDevice::FileModificationTime));
    return made;
  };
  const QString old = place("Documents/iTunes/Lib.XML", "<key>Music Folder</key>", 2004);
  EXPECT_EQ(newestLibraryFile(), old);
  place("Music/iTunes/other.xml", "<key>Something</key>", 2020);
  EXPECT_EQ(newestLibraryFile(), old);
  const QString newer = place("Music/iTunes/iTunes Library.xml", "x", 2007);
  EXPECT_EQ(newestLibraryFile(), newer);
}

TEST_F(LibraryXml, LocationsOfAnotherComputerAreFoundAndMappedOnlyWhenTold) {
  const QString here = folder(QStringLiteral("old/Media/Some One/Al bum/01 S\u00f6ng.mp3"));
  writeFile(here, "x");
  ASSERT_EQ(import(kLibrary), QString());
  const auto proposal =
      proposeMapping(store, mappingFolders(store, folder(QStringLiteral("old/Library.xml"))));
  ASSERT_TRUE(proposal);
  EXPECT_EQ(proposal->mapping.from, QStringLiteral("/Users/old/Music"));
  EXPECT_EQ(proposal->mapping.to, folder(QStringLiteral("old/Media")));
  EXPECT_EQ(proposal->missing, 1);
  EXPECT_EQ(proposal->found, 1);
  EXPECT_TRUE(store.tracks().atPath(here).empty());
  ImportOptions options;
  options.mappings = {proposal->mapping};
  ASSERT_EQ(import(kLibrary, options), QString());
  EXPECT_EQ(report.mapped, 1);
  EXPECT_EQ(store.tracks().atPath(here).size(), 1u);
  EXPECT_FALSE(proposeMapping(store, {folder()}));
}

TEST(LocationMappingTest, FoldersAreReplacedAsAWhole) {
  const struct {
    QString from, to, path, expected;
  } cases[] = {{u"/a/b"_qs, u"/n"_qs, u"/a/b/c"_qs, u"/n/c"_qs},
               {u"/a/b/"_qs, u"/n/"_qs, u"/a/b"_qs, u"/n"_qs},
               {u"/a/b"_qs, u"/n"_qs, u"/a/bc/d"_qs, {}},
               {u"C:\\My Music"_qs, u"/n"_qs, u"/C:/My Music/x"_qs, u"/n/x"_qs},
               {u"/"_qs, u"/n"_qs, u"/x"_qs, u"/n/x"_qs},
               {u"/a"_qs, u"/"_qs, u"/a/x"_qs, u"/x"_qs}};
  for (const auto &[from, to, path, expected] : cases) {
    const auto mapping = LocationMapping::of(from, to);
    ASSERT_TRUE(mapping) << from.toStdString();
    EXPECT_EQ(mapping->apply(path).value_or(QString()), expected) << from.toStdString();
  }
  const std::pair<QString, QString> bad[] = {
      {{}, {}}, {{}, u"/n"_qs}, {u"/a"_qs, {}}, {u"/a"_qs, u"n"_qs}, {u"a"_qs, u"/n"_qs}};
  for (const auto &[from, to] : bad) EXPECT_FALSE(LocationMapping::of(from, to)) << from.toStdString();
}
