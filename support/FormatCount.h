#pragma once

#include <QString>

/// A count for the logs: "1.5K", "2.0M" and so on up to P, one decimal; below about 909 the number itself,
/// with up to five decimals and at least one.
QString formatCount(double value);
