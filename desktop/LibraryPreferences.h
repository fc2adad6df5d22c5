#pragma once

#include "desktop/PreferencesPage.h"
#include "desktop/WindowActions.h"

class ElidedLabel;
class QLabel;
class QPushButton;

/// The tab "library": where library and media are, and what is asked and warned about.
class LibraryPreferences : public PreferencesPage {
 public:
  explicit LibraryPreferences(const WindowActions &actions);

  /// Empty for none.
  void setPaths(const QString &libraryFolder, const QString &mediaFolder);
  void setSongCount(const QString &text);

 private:
  void addFolders(const WindowActions &actions);

  ElidedLabel *libraryFolderLabel;
  ElidedLabel *mediaFolderLabel;
  QLabel *songCountLabel;
  QPushButton *automatic;
};
