#pragma once

#include "fuzz/InputFile.h"

/// The names of the atoms that hold others, as the programs know them; no log. Once a process.
inline void startAtoms() {
  static const bool done = [] {
    silence();
    Platform services = platform();
    services.bundle.resourceFolder = QStringLiteral(TALLYFEN_RESOURCE_FOLDER);
    setPlatform(services);
    return QFile::exists(services.bundle.resourceFolder + QStringLiteral("/atomcontainers.dat"));
  }();
  require(done);
}
