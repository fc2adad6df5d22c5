#include "tests/house/SourceTree.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>

SourceFile SourceFile::read(const QString &path, const QString &text) {
  static const QRegularExpression line(QStringLiteral("^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]"),
                                       QRegularExpression::MultilineOption);
  SourceFile file{path, {}, {}};
  for (auto matches = line.globalMatch(text); matches.hasNext();) {
    const auto match = matches.next();
    (match.captured(1) == u"<" ? file.angled : file.quoted) += match.captured(2);
  }
  return file;
}

std::vector<SourceFile> readSourceTree(const QString &root) {
  QStringList paths;
  for (const QString &folder : QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    if (folder.startsWith(u"build")) continue;
    QDirIterator files(root + u'/' + folder,
                       {QStringLiteral("*.h"), QStringLiteral("*.cpp"), QStringLiteral("*.mm")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) paths += files.next();
  }
  paths.sort();
  std::vector<SourceFile> tree;
  for (const QString &path : paths) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) continue;
    tree.push_back(SourceFile::read(QDir(root).relativeFilePath(path), QString::fromUtf8(file.readAll())));
  }
  return tree;
}
