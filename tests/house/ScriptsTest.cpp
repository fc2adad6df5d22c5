#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include "tests/house/SourceTree.h"

// The scripts that people edit by hand, and the names by which the code asks for them.
namespace {

const QString kRoot = QString::fromUtf8(TALLYFEN_SOURCE_FOLDER);
const QString kHandlers = QStringLiteral("Internal_Functions");

QString textOf(const QString &path) {
  QFile file(kRoot + u'/' + path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString script(const QString &name) {
  return textOf(QStringLiteral("resources/scripts/%1.applescript").arg(name));
}

// The names that the sources give to a call of one of the functions.
QSet<QString> namesGivenTo(const QString &functions) {
  const QRegularExpression call(
      QStringLiteral("\\b(?:%1)\\(\\s*(?:QStringLiteral\\(|u)\"(\\w+)\"").arg(functions));
  QSet<QString> names;
  for (const SourceFile &source : readSourceTree(kRoot)) {
    if (source.path.startsWith(u"tests/") || source.path.startsWith(u"bench/")) continue;
    for (auto matches = call.globalMatch(textOf(source.path)); matches.hasNext();)
      names.insert(matches.next().captured(1));
  }
  return names;
}

QSet<QString> scriptNames() {
  QSet<QString> names;
  for (const QString &file : QDir(kRoot + QStringLiteral("/resources/scripts")).entryList(QDir::Files))
    names.insert(file.section(u'.', 0, 0));
  names.remove(kHandlers);
  return names;
}

}  // namespace

TEST(Scripts, ThereIsOneForEveryNameAndANameForEveryOne) {
  const QSet<QString> asked = namesGivenTo(
      QStringLiteral("scriptNamed|stringFromScriptNameAndFormat|stringFromScriptNameAndArguments"));
  EXPECT_GT(asked.size(), 10);
  EXPECT_EQ((asked - scriptNames()).values(), QStringList());
  EXPECT_EQ((scriptNames() - asked).values(), QStringList());
}

TEST(Scripts, EveryHandlerThatIsCalledIsInTheLibrary) {
  const QSet<QString> called = namesGivenTo(QStringLiteral("stringFromCompiledFunctionParams"));
  EXPECT_GT(called.size(), 5);
  for (const QString &handler : called)
    EXPECT_TRUE(script(kHandlers).contains(QStringLiteral("\non %1(").arg(handler))) << handler.toStdString();
}

TEST(Scripts, ArePlainFormatsAndSpeakToTheApplicationByTheNameThatIsReplaced) {
  const QRegularExpression stray(QStringLiteral("%(?!(?:\\d\\$)?[@d]|%)"));
  const QRegularExpression otherName(QStringLiteral("\\bapp(?:lication)?\\s+(?!\"iTunes\")[\"i]"));
  for (const QString &name : scriptNames() + QSet<QString>{kHandlers, QStringLiteral("shared/findTrack")}) {
    EXPECT_FALSE(script(name).isEmpty()) << name.toStdString();
    EXPECT_FALSE(script(name).contains(otherName)) << name.toStdString();
    if (name == kHandlers) {
      EXPECT_FALSE(script(name).contains(u'%'));
    } else {
      EXPECT_FALSE(script(name).contains(stray)) << name.toStdString();
    }
  }
}
