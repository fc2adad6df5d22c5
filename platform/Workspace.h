#pragma once

#include <QString>

/// The user's session and its applications. Any thread.
class Workspace {
 public:
  virtual ~Workspace() = default;
  /// The name a user sees for the application at a path; empty if there is none.
  virtual QString displayNameOfApplication(const QString &path) const = 0;
  /// The system's name and version in one line, for the log.
  virtual QString systemDescription() const = 0;
};
