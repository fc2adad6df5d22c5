#pragma once

#include <QString>
#include <compare>

/// A moment: seconds since 2001-01-01 00:00:00 UTC, fractions included.
struct Date {
  double seconds = 0.0;

  auto operator<=>(const Date &) const = default;

  /// Seconds between the Unix epoch and the reference date.
  static constexpr double kUnixOffset = 978307200.0;

  static Date fromUnix(double unixSeconds) { return Date{unixSeconds - kUnixOffset}; }
  double toUnix() const { return seconds + kUnixOffset; }

  /// The moment of a UTC calendar date in the proleptic Gregorian calendar. Days beyond their month and
  /// hours beyond their day run on into the next.
  static Date fromCivil(int year, int month, int day, int hour, int minute, int second);

  /// "2008-02-29T12:00:00Z", whole seconds, rounded down.
  QString toIsoText() const;
};
