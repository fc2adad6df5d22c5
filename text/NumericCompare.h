#pragma once

#include <QStringView>

/// The order of two texts, whatever their case, with runs of digits compared by worth: "Track 9" goes before
/// "Track 10". Negative, 0 or positive; leading zeros do not count. Any thread.
int compareByWorth(QStringView text, QStringView other);
