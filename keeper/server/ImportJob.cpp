#include "keeper/server/ImportJob.h"

#include "keeper/library/LocationMapping.h"
#include "keeper/server/LibraryNotes.h"
#include "support/BMLog.h"

namespace importJob {

namespace {

QString summaryOf(const ImportReport &report, const QString &file) {
  return QStringLiteral("Imported %1: %2 tracks, %3 playlists")
      .arg(file)
      .arg(report.tracks)
      .arg(report.playlists);
}

QStringList remarksOn(const ImportReport &report) {
  const std::pair<qsizetype, const char *> remarks[] = {
      {report.mapped, "locations mapped"},
      {report.withoutID, "without a persistent ID, which got one"},
      {report.withDoubledID, "with another one's persistent ID, which got a new one"},
      {report.renumbered, "tracks with a new number"},
      {report.droppedItems, "items of playlists whose track is not in the file"},
      {report.unreadable, "entries that could not be read"}};
  QStringList lines;
  for (const auto &[count, text] : remarks) {
    if (count > 0) lines += QStringLiteral("  %1 %2").arg(count).arg(QString::fromUtf8(text));
  }
  return lines;
}

QStringList proposalFor(LibraryStore &store, const QString &file) {
  const auto proposal = proposeMapping(store, mappingFolders(store, file));
  if (!proposal) return {};
  return {QStringLiteral("%1 of %2 files are not where the library names them; %3 of them would be found by")
              .arg(proposal->missing)
              .arg(proposal->named)
              .arg(proposal->found),
          QStringLiteral("  --import \"%1\" --map \"%2=%3\"")
              .arg(file, proposal->mapping.from, proposal->mapping.to)};
}

}  // namespace

ScriptOutcome run(LibraryStore &store, const keeperProtocol::ImportRequest &request,
                  const std::function<bool(const ImportProgress &)> &onProgress) {
  ImportOptions options;
  options.onProgress = onProgress;
  for (const auto &[from, to] : request.mapping) {
    const auto mapping = LocationMapping::of(from, to);
    if (!mapping)
      return keeperProtocol::failed(
          keeperProtocol::kHandlerFailed,
          QStringLiteral("\"%1=%2\" is no mapping of a folder to a whole path").arg(from, to));
    options.mappings.push_back(*mapping);
  }
  LibraryImport import(store);
  const QString problem = import.run(request.file, options);
  if (!problem.isEmpty()) return keeperProtocol::failed(keeperProtocol::kHandlerFailed, problem);
  QStringList lines = QStringList{summaryOf(import.report(), request.file)} + remarksOn(import.report());
  try {
    libraryNotes::setUntouched(store);
    libraryNotes::setWaitingFile(store, {});
    lines += proposalFor(store, request.file);
  } catch (const StoreError &error) {
    BMLog("!! after the import: %@", error.message);
  }
  return {ScriptDescriptor::ofText(lines.join(u'\n')), std::nullopt};
}

}  // namespace importJob
