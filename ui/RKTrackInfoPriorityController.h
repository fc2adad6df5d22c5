#pragma once

#include <QStringList>
#include <functional>

/// The user's order of the criteria for the row of the information: identifiers "0" to "7", the most
/// important first. Main thread.
class RKTrackInfoPriorityController {
 public:
  /// Replaces the list's contents. No change by the user, so only `onReloaded` is told.
  void setPriorityArray(const QStringList &identifiers);
  const QStringList &priorityArray() const { return priorities; }

  /// What a criterion is called: the text of "PreferInfo-" and its identifier.
  static QString textOf(const QString &identifier);

  /// Puts the dropped identifiers, in their order, in front of the item now at `row`, or at the end past the
  /// last. False for none. Tells of the change even if it changes nothing.
  bool acceptDrop(const QStringList &identifiers, qsizetype row);
  /// Moves one item to another index, as a stepper does; both are rows of the list, others do nothing. Tells
  /// of the change unless they are equal.
  void move(qsizetype from, qsizetype to);

  /// RKPriorityChangedNotification: the order has been changed by the user.
  std::function<void()> onPriorityChanged;
  /// The table is to read the list anew. Told before `onPriorityChanged`.
  std::function<void()> onReloaded;

 private:
  void tellOfChange();

  QStringList priorities;
};
