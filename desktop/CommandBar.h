#pragma once

#include <QWidget>
#include <vector>

class QAction;
class QHBoxLayout;
class QLabel;
class QPushButton;

/// The row below the tables: what they hold, and buttons for the commands of the tab shown.
class CommandBar : public QWidget {
 public:
  CommandBar();

  void setText(const QString &text);
  /// Adds a button that does, shows and can be pressed as the command.
  void addButton(QAction *action);
  /// A button that does, shows and can be pressed as the command.
  static QPushButton *buttonFor(QAction *action);
  void setButtonsVisible(bool visible);

 protected:
  void paintEvent(QPaintEvent *event) override;

 private:
  QHBoxLayout *row;
  QLabel *label;
  std::vector<QPushButton *> buttons;
};
