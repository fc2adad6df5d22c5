#include "keeper/server/MusicKeeper.h"

#include "tests/fixtures/TestPlatform.h"

namespace {

class MusicKeeperInProcess : public TestPlatform {};

}  // namespace

TEST_F(MusicKeeperInProcess, NobodyTakesALibraryThatIsNotOpenYetForAnEmptyOne) {
  MusicKeeper::Setup setup;
  setup.folder = folder(u"library"_qs);
  MusicKeeper keeper(setup);
  EXPECT_TRUE(keeper.status().importing);
  EXPECT_EQ(keeper.open(), QString());
  EXPECT_FALSE(keeper.status().importing) << "there was no file to take in";
  keeper.close();
}
