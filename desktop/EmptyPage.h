#pragma once

#include <QWidget>

#include "desktop/Icons.h"

class QLabel;
class QPushButton;

/// What stands in place of an empty table: an icon, what is the case, and what to do about it.
class EmptyPage : public QWidget {
 public:
  struct Button {
    QString label;
    std::function<void()> pressed;
  };

  EmptyPage();

  /// At most two buttons; the first is the default one.
  void setContents(icons::Shape shape, const QString &title, const QString &text,
                   std::vector<Button> buttons);

 protected:
  void changeEvent(QEvent *event) override;

 private:
  void updateColours();

  icons::Shape shown = icons::Shape::Note;
  QLabel *picture;
  QLabel *titleLabel;
  QLabel *textLabel;
  QPushButton *pushButtons[2];
  std::vector<Button> contents;
};
