#pragma once

#include <QString>

/// Tells the log how far a scan is, at most once in five minutes. One thread.
class ScanProgressLog {
 public:
  /// `label` is what the line begins with, for `count` tracks in all. The first line is due in five minutes.
  ScanProgressLog(const QString &label, quint64 count);

  /// The scan is at the track with this index, below the count.
  void tell(quint64 index);

 private:
  QString label;
  quint64 count;
  /// In seconds since 2001.
  double next;
};
