#include <QFile>

#include "tests/ctl/ProgramFixture.h"
#include "tools/demo/DemoLibrary.h"

/// The whole output about the demo library, as the files in golden/ have it: the program's own, a line for
/// each object and list that follows another.
class DemoOutputTest : public ProgramFixture {
 protected:
  void SetUp() override { ASSERT_EQ(makeDemoLibrary(folder(QStringLiteral("home")), 1).error, QString()); }

  void expectOutput(const char *line, const char *golden) {
    EXPECT_EQ(execute(words(line)), 1);
    EXPECT_EQ(err, "");
    QString output = QString::fromStdString(out);
    for (const char16_t *const bracket : {u"{", u"["}) {
      const QString next = QStringLiteral(", ") + QString::fromUtf16(bracket);
      output.replace(next, QStringLiteral(",\n") + QString::fromUtf16(bracket));
    }
    const QString path = QStringLiteral(GOLDEN_FOLDER "/") + QString::fromUtf8(golden);
    EXPECT_EQ(output.toStdString(), readFile(path).toStdString())
        << "If the new output is right, it belongs into " << path.toStdString();
  }
};

TEST_F(DemoOutputTest, AScanTellsTheSameOnEveryMachine) {
  expectOutput("scan --json", "demo-scan.json");
}

TEST_F(DemoOutputTest, TheMarksAreTheSameOnEveryMachine) {
  expectOutput("marks --json", "demo-marks.json");
  expectOutput("marks --json --pref preferInfoTypes= --pref preferAudioData15=1", "demo-marks-smallest.json");
}

TEST_F(DemoOutputTest, NamesThatSoundAlikeAreTheSameOnEveryMachine) {
  expectOutput("names --json --pref inconsistentMatchMethod=1", "demo-names-by-sound.json");
}
