#include "ctl/ScanRequest.h"

#include "ctl/SettingTable.h"

namespace {

const QString kLibrary = QStringLiteral("--library");
const QString kMedia = QStringLiteral("--media");
const QString kPref = QStringLiteral("--pref");
const QString kJson = QStringLiteral("--json");

}  // namespace

QStringList ScanRequest::flagNames() {
  return {kJson};
}

QStringList ScanRequest::valueNames() {
  return {kLibrary, kMedia, kPref};
}

QString ScanRequest::usage() {
  return QStringLiteral("[--library FILE] [--media DIR] [--pref KEY=VALUE]... [--json]");
}

bool ScanRequest::take(const Options &options, QString *error) {
  library = options.value(kLibrary);
  media = options.value(kMedia);
  json = options.has(kJson);
  for (const QString &assignment : options.values(kPref)) {
    std::pair<QString, Value> setting;
    if (!settings::parseAssignment(assignment, &setting.first, &setting.second, error)) return false;
    this->settings.push_back(std::move(setting));
  }
  return true;
}
