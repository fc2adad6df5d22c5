#pragma once

#include "values/Value.h"

struct AppState;
class InconNameController;

/// The scan thread that finds artists and albums spelled in more than one way.
class InconsistentNameScanner {
 public:
  /// Both outlive the scanner.
  InconsistentNameScanner(AppState &appState, const InconNameController &names);

  /// The body of the thread: appends rows to `mInconsistentNameDicts`, artists before albums of one seed, and
  /// ends by setting `mCompletedFindInconsistentNames`. Never throws.
  void scanLibraryForInconsistentNamesThread();

 private:
  void scan();
  void append(const Dictionary &row, const Array &list);

  AppState &state;
  const InconNameController &mInconNameController;
};
