#pragma once

#include <QStringList>
#include <functional>

/// The user's order of the criteria for the row of the information: identifiers "0" to "7", the most
/// important first. Main thread.
class RKTrackInfoPriorityController {
 public:
  /// Replaces the list's contents.
  void setPriorityArray(const QStringList &identifiers);
  const QStringList &priorityArray() const { return priorities; }

  /// What a criterion is called: the text of "PreferInfo-" and its identifier.
  static QString textOf(const QString &identifier);

  /// Puts the dropped identifiers, in their order, in front of the item now at `row`, or at the end past the
  /// last. False for none. Tells of the change even if it changes nothing.
  bool acceptDrop(const QStringList &identifiers, qsizetype row);
  /// Moves one item to another index, as a stepper does; both are rows. Tells of the change unless they are
  /// equal.
  void move(qsizetype from, qsizetype to);

  /// RKPriorityChangedNotification: the order has been changed by the user.
  std::function<void()> onPriorityChanged;

 private:
  QStringList priorities;
};
