#include "app/library/MappedFile.h"

#include <gtest/gtest.h>

#include "tests/fixtures/TestPlatform.h"

namespace {

class MappedFiles : public TestPlatform {};

TEST_F(MappedFiles, GiveEveryByteAndNothingOfTheFileBefore) {
  MappedFile file;
  QString error;
  ASSERT_TRUE(file.open(writeFile(QStringLiteral("one"), QByteArray(10000, 'a')), &error));
  EXPECT_EQ(file.bytes().toByteArray(), QByteArray(10000, 'a'));
  ASSERT_TRUE(file.open(writeFile(QStringLiteral("none"), {}), &error));
  EXPECT_TRUE(file.bytes().isEmpty());
  EXPECT_EQ(error, QString());
}

TEST_F(MappedFiles, SayWhichFileCannotBeReadAndWhy) {
  MappedFile file;
  QString error;
  const QString gone = folder(QStringLiteral("gone.xml"));
  EXPECT_FALSE(file.open(gone, &error));
  EXPECT_TRUE(error.contains(gone) && error.size() > gone.size() + 15) << qPrintable(error);
  error.clear();
  EXPECT_FALSE(file.open(folder(), &error));
  EXPECT_TRUE(error.contains(folder())) << qPrintable(error);
}

}  // namespace
