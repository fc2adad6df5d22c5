#pragma once

#include <memory>

#include "app/state/AppState.h"
#include "ctl/OpenedLibrary.h"
#include "ctl/Options.h"
#include "ctl/Session.h"
#include "ctl/TerminalView.h"

/// What the user declared of one library's tracks: which are no duplicates of one another. Kept in the user's
/// own settings, so that every later scan of the library by either program honours it. Main thread.
class Declarations {
 public:
  /// The options by which the library is named, and how they are used.
  static QStringList optionNames();
  static QString usage();

  /// Opens the library that the options name. Null, with a message, if there is no such library or media
  /// folder. Until `save` nothing is changed.
  static std::unique_ptr<Declarations> open(const Options &options, Terminal &terminal);

  /// The library's track of a persistent ID, in capital letters or not; null if there is none.
  Dictionary track(const QString &pid) const { return tracks.value(pid.toUpper()); }
  IgnoredDuplicates &store() { return state.ignoredDuplicates; }
  /// Writes the declarations to the user's settings. False with a message if they could not be saved. Once.
  [[nodiscard]] bool save(Terminal &terminal);

 private:
  explicit Declarations(Terminal &terminal) : view(terminal), state(view) {}
  [[nodiscard]] bool openLibrary(const QString &library, const QString &media, Terminal &terminal);

  Session session{Session::LogAtEnd::StaysText};
  TerminalView view;
  AppState state;
  /// By persistent ID in capital letters.
  QHash<QString, Dictionary> tracks;
};
