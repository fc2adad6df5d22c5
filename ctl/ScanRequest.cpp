#include "ctl/ScanRequest.h"

#include "ctl/SettingTable.h"

namespace {

const QString kLibrary = QStringLiteral("--library");
const QString kMedia = QStringLiteral("--media");
const QString kPref = QStringLiteral("--pref");

}  // namespace

QStringList ScanRequest::flagNames() {
  return {Options::json()};
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
  json = options.wantsJson();
  for (const QString &assignment : options.values(kPref)) {
    std::pair<QString, Value> setting;
    if (!settings::parseAssignment(assignment, &setting.first, &setting.second, error)) return false;
    this->settings.push_back(std::move(setting));
  }
  return true;
}
