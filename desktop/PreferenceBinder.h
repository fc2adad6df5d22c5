#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

class QAbstractButton;
class QComboBox;
class QSlider;
class QSpinBox;
class Value;

/// Ties controls to settings: a change is stored at once, and `refresh` brings the store's values back, as
/// the application may answer one change with another. The controls outlive the binder's use. Main thread.
class PreferenceBinder {
 public:
  PreferenceBinder() : alive(std::make_shared<bool>(true)) {}
  PreferenceBinder(const PreferenceBinder &) = delete;

  /// `inverted`: the control is on while the setting is false.
  void bindCheckBox(QAbstractButton *box, const QString &key, bool inverted);
  void bindSpinBox(QSpinBox *box, const QString &key);
  void bindSlider(QSlider *slider, const QString &key);
  /// The setting is the index.
  void bindComboBox(QComboBox *box, const QString &key);

  /// Shows the settings as they are stored, then runs `onRefresh`.
  void refresh();
  /// For what depends on other settings, such as enabled states.
  std::function<void()> onRefresh;

 private:
  void bindNumber(QObject *control, const QString &key, std::function<void(int)> show);
  /// Stores the value and refreshes once the application has had its say.
  void store(const QString &key, const Value &value);

  std::vector<std::function<void()>> refreshers;
  std::shared_ptr<bool> alive;
};
