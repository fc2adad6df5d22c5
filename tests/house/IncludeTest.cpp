#include <QDir>

#include "tests/house/IncludeRules.h"

namespace {

QString moduleFromQtHeaders(const QString &header) {
  if (header.contains(u'/')) return header.section(u'/', 0, 0);
  static const QStringList folders = QString::fromUtf8(TALLYFEN_QT_HEADERS).split(u'|');
  for (const QString &folder : folders) {
    for (const char *name :
         {"QtCore", "QtGui", "QtWidgets", "QtNetwork", "QtSql", "QtPrintSupport", "QtMultimedia"}) {
      const QString module = QString::fromLatin1(name);
      if (QFile::exists(folder + u'/' + module + u'/' + header)) return module;
    }
  }
  return {};
}

QStringList faultsOf(std::initializer_list<std::pair<const char *, const char *>> files) {
  std::vector<SourceFile> tree;
  for (const auto &[path, text] : files)
    tree.push_back(SourceFile::read(QString::fromUtf8(path), QString::fromUtf8(text)));
  return findIncludeFaults(tree, moduleFromQtHeaders);
}

}  // namespace

TEST(Includes, RunFromTheTopOfTheHouseToTheGround) {
  const std::vector<SourceFile> tree = readSourceTree(QString::fromUtf8(TALLYFEN_SOURCE_FOLDER));
  ASSERT_GT(tree.size(), 50u);
  const QStringList faults = findIncludeFaults(tree, moduleFromQtHeaders);
  EXPECT_TRUE(faults.isEmpty()) << faults.join(u'\n').toStdString();
}

TEST(Includes, EachKindOfFaultIsFound) {
  struct Case {
    const char *from, *to;
    bool isFault;
  };
  const Case cases[] = {{"values/A.h", "values/B.h", false},
                        {"values/A.h", "platform/B.h", true},
                        {"text/A.cpp", "support/B.h", false},
                        {"support/A.cpp", "text/B.h", true},
                        {"app/library/A.h", "app/state/B.h", true},
                        {"app/state/A.h", "app/library/B.h", false},
                        {"app/state/A.h", "app/B.h", true},
                        {"app/A.h", "scanners/B.h", true},
                        {"repairs/A.h", "app/state/B.h", false},
                        {"audio/mp4/A.h", "audio/tags/B.h", false},
                        {"support/A.h", "platform/qt/B.h", true},
                        {"program/A.h", "platform/qt/B.h", true},
                        {"ctl/A.h", "platform/qt/B.h", false},
                        {"platform/qt/A.h", "platform/B.h", false},
                        {"platform/qt/A.h", "support/B.h", true},
                        {"platform/A.h", "platform/qt/B.h", true},
                        {"desktop/A.h", "program/B.h", false},
                        {"desktop/A.h", "ctl/B.h", true},
                        {"program/A.h", "desktop/B.h", true},
                        {"keeper/script/A.h", "app/library/PropertyListReader.h", false},
                        {"keeper/script/A.h", "app/state/B.h", true},
                        {"tools/demo/A.h", "audio/B.h", false},
                        {"tools/A.h", "scanners/B.h", true},
                        {"attic/A.h", "values/B.h", true},
                        {"app/A.h", "tests/app/B.h", true},
                        {"tests/app/A.h", "desktop/B.h", false}};
  for (const Case &c : cases) {
    const QByteArray text = QByteArray("#include \"") + c.to + "\"\n";
    EXPECT_EQ(faultsOf({{c.from, text.constData()}, {c.to, ""}}).size(), c.isFault ? 1 : 0)
        << c.from << " " << c.to;
  }
}

TEST(Includes, ACircleIsFoundWhereverItBegins) {
  const QStringList faults =
      faultsOf({{"text/A.h", "#include \"text/B.h\"\n"},
                {"text/B.h", "// first\n#include <QString>\n #  include \"text/C.h\"\n"},
                {"text/C.h", "#include \"text/B.h\"\n"}});
  ASSERT_EQ(faults.size(), 1) << faults.join(u'\n').toStdString();
  EXPECT_EQ(faults.front(), QStringLiteral("text/B.h -> text/C.h -> text/B.h: a circle"));
}

TEST(Includes, AFileThatIsNotThereIsToldAndQtModulesKeepToTheirFolders) {
  EXPECT_EQ(faultsOf({{"text/A.h", "#include \"B.h\"\n"}}).size(), 1);
  EXPECT_EQ(faultsOf({{"ui/A.h", "#include <QWidget>\n"}}).size(), 1);
  EXPECT_EQ(faultsOf({{"ui/A.h", "#include <QtWidgets/QLabel>\n"}}).size(), 1);
  EXPECT_EQ(faultsOf({{"support/A.h", "#include <QImage>\n#include <QTcpSocket>\n"}}).size(), 2);
  EXPECT_EQ(faultsOf({{"scanners/A.h", "#include <QSqlQuery>\n"}}).size(), 1);
  EXPECT_TRUE(faultsOf({{"desktop/A.h", "#include <QWidget>\n"},
                        {"platform/qt/A.h", "#include <QImage>\n#include <QNetworkReply>\n"},
                        {"text/A.h", "#include <QString>\n#include <vector>\n"}})
                  .isEmpty());
}
