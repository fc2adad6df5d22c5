#include "platform/FileAddress.h"

#include <gtest/gtest.h>

TEST(FileAddress, GivesThePathThatTheLibraryMeans) {
  const struct {
    QString address, path;
  } cases[] = {
      {QStringLiteral("file:///Music/a%20b.mp3"), QStringLiteral("/Music/a b.mp3")},
      {QStringLiteral("file://localhost/Music/a.mp3"), QStringLiteral("/Music/a.mp3")},
      {QStringLiteral("file:/Music/a.mp3"), QStringLiteral("/Music/a.mp3")},
      {QStringLiteral("file:///Music/iTunes%20Media/"), QStringLiteral("/Music/iTunes Media")},
      {QStringLiteral("file:///"), QStringLiteral("/")},
      {QStringLiteral("file:///a%23b%3Fc"), QStringLiteral("/a#b?c")},
      {QStringLiteral("file:///a#b"), QStringLiteral("/a")},
      {QStringLiteral("file:///a?b"), QStringLiteral("/a")},
      {QStringLiteral("file:///caf%C3%A9"), QStringLiteral("/café")},
      {QStringLiteral("file:///café"), QStringLiteral("/café")},
      {QStringLiteral("file:///caf%E9"), QString()},
      {QStringLiteral("file:///a%2"), QString()},
      {QStringLiteral("file:///a%zz"), QString()},
      {QStringLiteral("file://host"), QString()},
  };
  for (const auto &[address, path] : cases)
    EXPECT_EQ(pathOfFileAddress(address), path) << qPrintable(address);
}

TEST(FileAddress, AnyPathSurvivesTheWayThroughAnAddress) {
  for (const char16_t *text : {u"/a b/c#d?e%f.mp3", u"/Ünï/日本/ё.m4a", u"/semi;colon/\"quote\"/[x]{y}"}) {
    const QString path = QString::fromUtf16(text);
    EXPECT_EQ(pathOfFileAddress(fileAddressOfPath(path)), path);
  }
}
