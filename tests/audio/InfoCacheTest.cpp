#include <fcntl.h>
#include <sys/stat.h>

#include <QFile>
#include <thread>

#include "audio/CachedInfoKeys.h"
#include "audio/CachedInfoTag.h"
#include "audio/SongFile.h"
#include "audio/SongFileInfoCache.h"
#include "audio/mp4/AACInfoTag.h"
#include "tests/fixtures/TestPlatform.h"

namespace {

class InfoCache : public TestPlatform {
 protected:
  ~InfoCache() override { SongFileInfoCache::resetSharedCache(); }

  QString base() const { return folder(u"caches/test.info"_qs); }
  QString song(const QString &name, qint64 nanoseconds = 123456789) const {
    const QString path = writeFile(name, QByteArray(300, 'x'));
    setDate(path, nanoseconds);
    return path;
  }
  static void setDate(const QString &path, qint64 nanoseconds) {
    const timespec times[2] = {{1700000000, nanoseconds}, {1700000000, nanoseconds}};
    EXPECT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
  }
  static Dictionary infoOf(const QString &path, const QString &title) {
    AACInfoTag tag;
    tag.setTitle(title);
    return CachedInfoTag::infoDictForTagPath(tag, path);
  }
  static QString titleOf(SongFileInfoCache &cache, const QString &path) {
    return cache.infoForSongFileAtPath(path).value(cachedinfo::title).toText();
  }
};

TEST_F(InfoCache, EntriesAreFoundAgainInAnotherCacheToTheLastDigitOfTheDate) {
  for (const qint64 nanoseconds : {123456789, 1, 999999999, 123456000}) {
    const QString path = song(u"music/Alpha/a.mp3"_qs, nanoseconds);
    {
      SongFileInfoCache cache(base());
      cache.storeInfoForSongFileAtPath(infoOf(path, u"Title"_qs), path);
    }
    SongFileInfoCache cache(base());
    EXPECT_EQ(titleOf(cache, path), u"Title"_qs) << nanoseconds;
    setDate(path, nanoseconds == 1 ? 1000 : nanoseconds - 1000);
    EXPECT_TRUE(cache.infoForSongFileAtPath(path).isNull());
    setDate(path, nanoseconds);
    EXPECT_EQ(titleOf(cache, path), u"Title"_qs) << "the old date makes it trusted again";
    QFile::remove(path);
    EXPECT_TRUE(cache.infoForSongFileAtPath(path).isNull());
  }
}

TEST_F(InfoCache, FoldersThatEndAlikeShareAFileAndShortOnesHaveNone) {
  const QString one = song(u"music/Alpha/a.mp3"_qs), other = song(u"home/Alpha/a.mp3"_qs);
  const auto number = SongFileInfoCache::keyNumberForPath(one);
  EXPECT_EQ(number, SongFileInfoCache::keyNumberForPath(other));
  EXPECT_EQ(*number, ((u'l' << 21) + (u'p' << 14) + (u'h' << 7) + u'a'));
  EXPECT_FALSE(SongFileInfoCache::keyNumberForPath(u"/abc/b.mp3"_qs));
  EXPECT_TRUE(SongFileInfoCache::keyNumberForPath(u"/abcd/b.mp3"_qs));
  SongFileInfoCache cache(base());
  cache.storeInfoForSongFileAtPath(infoOf(one, u"One"_qs), one);
  cache.storeInfoForSongFileAtPath(infoOf(other, u"Other"_qs), other);
  EXPECT_EQ(titleOf(cache, one), u"One"_qs);
  EXPECT_EQ(titleOf(cache, other), u"Other"_qs);
  cache.storeInfoForSongFileAtPath(infoOf(one, u"x"_qs), u"/abc/b.mp3"_qs);
  cache.storeInfoForSongFileAtPath({}, one);
  EXPECT_TRUE(logContains(u"nil storeInfo for "_qs + one));
}

TEST_F(InfoCache, WritingWaitsForAPauseAndThenGoesFileByFile) {
  SongFileInfoCache cache(base());
  QStringList files;
  for (const char *name : {"music/Aaaaa/a.mp3", "music/Bbbbb/a.mp3"}) {
    const QString path = song(QString::fromLatin1(name));
    cache.storeInfoForSongFileAtPath(infoOf(path, u"T"_qs), path);
    files += cache.pathForKeyNumber(*SongFileInfoCache::keyNumberForPath(path));
    time.run(0.06);
    EXPECT_TRUE(cache.isDirty());
  }
  const auto written = [&files] { return int(QFile::exists(files[0])) + int(QFile::exists(files[1])); };
  EXPECT_EQ(written(), 0) << "the second store put off the first";
  ASSERT_TRUE(time.runUntil([&] { return written() == 1; }, 1));
  EXPECT_TRUE(cache.isDirty());
  ASSERT_TRUE(time.runUntil([&] { return !cache.isDirty(); }, 1));
  EXPECT_EQ(written(), 2);
  EXPECT_EQ(time.timerCount(), 0);
}

TEST_F(InfoCache, ACorruptFileIsAnEmptyOneAndIsReplaced) {
  const QString path = song(u"music/Alpha/a.mp3"_qs);
  SongFileInfoCache cache(base()), memoryOnly(base());
  writeFile(cache.pathForKeyNumber(*SongFileInfoCache::keyNumberForPath(path)), "bplist00 not");
  memoryOnly.setAllowDiskReads(false);
  EXPECT_TRUE(memoryOnly.infoForSongFileAtPath(path).isNull());
  EXPECT_FALSE(logContains(u"Couldn't unarchive"_qs)) << "the file was not read";
  EXPECT_TRUE(cache.infoForSongFileAtPath(path).isNull());
  EXPECT_EQ(logText().count(u"Couldn't unarchive"_qs), 1);
  cache.storeInfoForSongFileAtPath(infoOf(path, u"New"_qs), path);
  cache.detach();
  SongFileInfoCache again(base());
  EXPECT_EQ(titleOf(again, path), u"New"_qs);
}

TEST_F(InfoCache, AFolderThatCannotBeMadeKeepsItsEntriesAndHoldsNobodyUp) {
  writeFile(base(), "a file in the way");
  const QString path = song(u"music/Alpha/a.mp3"_qs);
  SongFileInfoCache cache(base());
  cache.storeInfoForSongFileAtPath(infoOf(path, u"T"_qs), path);
  time.run(1);
  cache.detach();
  EXPECT_TRUE(cache.isDirty());
  EXPECT_EQ(time.timerCount(), 0);
}

TEST_F(InfoCache, StoresAndLookUpsOfManyThreadsDoNotMeet) {
  SongFileInfoCache cache(base());
  const QString path = song(u"music/Alpha/a.mp3"_qs);
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([&cache, path] {
      for (int turn = 0; turn < 200; ++turn) {
        const Dictionary info = infoOf(path, u"T"_qs);
        cache.storeInfoForSongFileAtPath(info, path);
        info.set(cachedinfo::title, u"changed later"_qs);
        EXPECT_EQ(titleOf(cache, path), u"T"_qs);
        if (turn % 50 == 0) cache.detach();
      }
    });
  }
  for (std::thread &thread : threads) thread.join();
}

TEST_F(InfoCache, ALookUpMakesNoKey) {
  SongFileInfoCache cache(base());
  const QString path = folder(u"music/Alpha/never stored.mp3"_qs);
  EXPECT_TRUE(cache.infoForSongFileAtPath(path).isNull());
  EXPECT_TRUE(Key::find(path).isAbsent());
}

TEST_F(InfoCache, ASongGoesBackToWhatIsRemembered) {
  const QString path = song(u"music/Alpha/a.m4a"_qs);
  const auto one = SongFile::songWithPath(path);
  EXPECT_FALSE(one->revertToCachedInfotag());
  AACInfoTag tag;
  tag.setArtist(u"Artist"_qs);
  tag.setIsPartOfCompilation(true);
  const Dictionary plain = CachedInfoTag::infoDictForTagPath(tag, path);
  EXPECT_TRUE(plain.contains(cachedinfo::artworkBytes) && !plain.contains(cachedinfo::numberOfImages));
  EXPECT_FALSE(plain.contains(cachedinfo::icon) || plain.contains(cachedinfo::title));
  tag.addImage(ID3Image::imageWithDataMimeType(QByteArray(77, 'p'), {}));
  SongFileInfoCache::sharedCache().storeInfoForSongFileAtPath(CachedInfoTag::infoDictForTagPath(tag, path),
                                                              path);
  ASSERT_TRUE(one->revertToCachedInfotag());
  AudioInfoTag &cached = *one->infotag();
  EXPECT_EQ(cached.artist(), u"Artist"_qs);
  EXPECT_TRUE(cached.title().isNull() && cached.isPartOfCompilation() && cached.isLazy());
  EXPECT_EQ(cached.numberOfImages(), 1);
  EXPECT_EQ(cached.numberOfArtworkBytes(), 77U);
  cached.setTitle(u"x"_qs);
  EXPECT_FALSE(cached.removeImageAtIndex(0) || cached.addImage(nullptr));
  EXPECT_TRUE(cached.title().isNull());
  EXPECT_EQ(logText().count(u"Cannot mutate"_qs), 3);
}

}  // namespace
