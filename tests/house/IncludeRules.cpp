#include "tests/house/IncludeRules.h"

#include <QHash>
#include <QSet>

namespace {

// From the ground up: a folder includes from itself and from what stands before it.
const QStringList kLayers = {
    QStringLiteral("values"),      QStringLiteral("platform"),  QStringLiteral("support"),
    QStringLiteral("text"),        QStringLiteral("bridge"),    QStringLiteral("audio"),
    QStringLiteral("app/library"), QStringLiteral("app/state"), QStringLiteral("app"),
    QStringLiteral("scanners"),    QStringLiteral("repairs"),   QStringLiteral("ui"),
    QStringLiteral("program")};
const QStringList kAdapters = {QStringLiteral("platform/qt"), QStringLiteral("platform/keeper"),
                               QStringLiteral("platform/macos")};
const QStringList kPrograms = {QStringLiteral("desktop"), QStringLiteral("ctl"), QStringLiteral("keeper"),
                               QStringLiteral("tools")};
const QStringList kSpectators = {QStringLiteral("tests"), QStringLiteral("bench"), QStringLiteral("fuzz"),
                                 QStringLiteral("cmake")};
// These programs stand on the audio folder; of what is above it they know one file.
const QStringList kSmallPrograms = {QStringLiteral("keeper"), QStringLiteral("tools")};
const QString kHighestForSmall = QStringLiteral("audio");
const QString kReader = QStringLiteral("app/library/PropertyListReader.h");

// Who may use a Qt module beyond Core; spectators always may.
const QHash<QString, QStringList> kModuleUsers = {
    {QStringLiteral("QtWidgets"), {QStringLiteral("desktop")}},
    {QStringLiteral("QtPrintSupport"), {QStringLiteral("desktop")}},
    {QStringLiteral("QtMultimedia"), {QStringLiteral("desktop")}},
    {QStringLiteral("QtGui"), {QStringLiteral("desktop"), QStringLiteral("platform/qt")}},
    {QStringLiteral("QtNetwork"),
     {QStringLiteral("platform/qt"), QStringLiteral("platform/keeper"), QStringLiteral("keeper/server")}},
    {QStringLiteral("QtSql"), {QStringLiteral("keeper/library"), QStringLiteral("platform/keeper")}}};

bool isBelow(const QString &path, const QString &folder) {
  return path.startsWith(folder + u'/');
}

// The longest of the folders that holds the path; empty if none does.
QString folderOf(const QString &path, const QStringList &folders) {
  QString found;
  for (const QString &folder : folders) {
    if (isBelow(path, folder) && folder.size() > found.size()) found = folder;
  }
  return found;
}

// Why the file may not include the other, or nothing.
QString faultOfArrow(const QString &from, const QString &to) {
  if (!folderOf(from, kSpectators).isEmpty()) return {};
  if (!folderOf(to, kSpectators).isEmpty()) return QStringLiteral("only tests include tests");
  const QString fromProgram = folderOf(from, kPrograms), toProgram = folderOf(to, kPrograms);
  if (!toProgram.isEmpty()) {
    return fromProgram == toProgram ? QString() : QStringLiteral("a program is included by nothing else");
  }
  const QString fromAdapter = folderOf(from, kAdapters), toAdapter = folderOf(to, kAdapters);
  if (!toAdapter.isEmpty()) {
    const bool allowed = fromAdapter == toAdapter || !fromProgram.isEmpty();
    return allowed ? QString() : QStringLiteral("only programs choose adapters");
  }
  qsizetype highest = kLayers.size();
  if (kSmallPrograms.contains(fromProgram)) {
    if (fromProgram == u"keeper" && to == kReader) return {};
    highest = kLayers.indexOf(kHighestForSmall);
  } else if (fromProgram.isEmpty()) {
    highest = kLayers.indexOf(fromAdapter.isEmpty() ? folderOf(from, kLayers) : QStringLiteral("platform"));
    if (highest < 0) return QStringLiteral("a folder that has no place in the order");
  }
  const qsizetype target = kLayers.indexOf(folderOf(to, kLayers));
  if (target < 0) return QStringLiteral("a folder that has no place in the order");
  return target <= highest ? QString() : QStringLiteral("an arrow that runs the wrong way");
}

// Walks the includes in depth; the first circle met from each file is told once.
class CircleFinder {
 public:
  explicit CircleFinder(const QHash<QString, const SourceFile *> &all) : files(all) {}

  void visit(const QString &path, QStringList *faults) {
    const qsizetype at = road.indexOf(path);
    if (at >= 0)
      *faults +=
          (road.mid(at) + QStringList{path}).join(QStringLiteral(" -> ")) + QStringLiteral(": a circle");
    if (at >= 0 || done.contains(path)) return;
    road += path;
    for (const QString &next : files.value(path)->quoted) {
      if (files.contains(next)) visit(next, faults);
    }
    road.removeLast();
    done.insert(path);
  }

 private:
  const QHash<QString, const SourceFile *> &files;
  QStringList road;
  QSet<QString> done;
};

void checkModules(const SourceFile &file, const ModuleOfHeader &moduleOfHeader, QStringList *faults) {
  if (!folderOf(file.path, kSpectators).isEmpty()) return;
  for (const QString &header : file.angled) {
    const QString module = moduleOfHeader(header);
    if (!kModuleUsers.contains(module) || !folderOf(file.path, kModuleUsers.value(module)).isEmpty())
      continue;
    *faults += QStringLiteral("%1 -> <%2>: %3 is not for this folder").arg(file.path, header, module);
  }
}

}  // namespace

QStringList findIncludeFaults(const std::vector<SourceFile> &tree, const ModuleOfHeader &moduleOfHeader) {
  QHash<QString, const SourceFile *> files;
  for (const SourceFile &file : tree) files.insert(file.path, &file);
  QStringList faults;
  CircleFinder circles(files);
  for (const SourceFile &file : tree) {
    for (const QString &included : file.quoted) {
      const QString fault = files.contains(included)
                                ? faultOfArrow(file.path, included)
                                : QStringLiteral("no such file from the root of the tree");
      if (!fault.isEmpty()) faults += QStringLiteral("%1 -> %2: %3").arg(file.path, included, fault);
    }
    checkModules(file, moduleOfHeader, &faults);
    circles.visit(file.path, &faults);
  }
  return faults;
}
