#include "ui/RKTrackInfoPriorityController.h"

#include "tests/fixtures/TestPlatform.h"

namespace {

class Priorities : public TestPlatform {
 protected:
  Priorities() {
    controller.setPriorityArray({u"0"_qs, u"1"_qs, u"2"_qs, u"3"_qs});
    controller.onPriorityChanged = [this] { ++changes; };
  }
  std::string order() const { return controller.priorityArray().join(QString()).toStdString(); }

  RKTrackInfoPriorityController controller;
  int changes = 0;
};

}  // namespace

TEST_F(Priorities, DropsKeepTheirOrderInFrontOfTheRow) {
  const struct {
    QStringList dropped;
    int row;
    const char *after;
  } drops[] = {{{u"3"_qs}, 0, "3012"},          {{u"3"_qs}, 0, "3012"},
               {{u"3"_qs}, 4, "0123"},          {{u"0"_qs, u"1"_qs}, 3, "2013"},
               {{u"2"_qs, u"3"_qs}, 2, "0231"}, {{u"0"_qs, u"3"_qs}, 99, "2103"}};
  int told = 0;
  for (const auto &drop : drops) {
    EXPECT_TRUE(controller.acceptDrop(drop.dropped, drop.row));
    EXPECT_EQ(order(), drop.after);
    EXPECT_EQ(changes, ++told) << "a drop that changes nothing is told too";
  }
  EXPECT_FALSE(controller.acceptDrop({}, 0));
  EXPECT_EQ(changes, told);
  EXPECT_TRUE(logContains(u"acceptDrop 2 items in front of 3"_qs));
  EXPECT_TRUE(logContains(u"acceptDrop 1 items in front of (null)"_qs));
}

TEST_F(Priorities, StepsStopAtTheEnds) {
  controller.move(2, 1);
  EXPECT_EQ(order(), "0213");
  for (const auto &[from, to] : {std::pair(0, -1), std::pair(3, 4), std::pair(1, 1), std::pair(-1, 0)}) {
    controller.move(from, to);
  }
  EXPECT_EQ(order(), "0213");
  EXPECT_EQ(changes, 1);
}
