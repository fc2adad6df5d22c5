#pragma once

#include "platform/Workspace.h"

/// The desktop session as far as Qt knows it.
class QtWorkspace : public Workspace {
 public:
  /// The file's name without its ending, for an executable file or an application folder.
  QString displayNameOfApplication(const QString &path) const override;
  QString systemDescription() const override;
};
