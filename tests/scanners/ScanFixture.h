#pragma once

#include <QSet>

#include "app/state/AppState.h"
#include "scanners/DuplicateScanner.h"
#include "support/Preferences.h"
#include "tests/fixtures/ScriptedView.h"
#include "tests/fixtures/TestPlatform.h"
#include "values/Keys.h"

/// A library in memory, whose files exist unless they are named gone, and a scan of it on the test's thread.
class ScanFixture : public TestPlatform {
 protected:
  ScanFixture() {
    state.library.mMusicLibrarySortedTracks = Array::make();
    setPreference(prefs::allowedDurationVariation, 10);
    setPreference(prefs::ignoreDurationMinimum, 30);
    scanner.setFileExists([this](const QString &path) {
      asked.append(path);
      return !gone.contains(path);
    });
  }

  /// A track with a file "/PID"; null texts are absent.
  Dictionary add(const char16_t *pid, const char16_t *artist, const char16_t *name, Value milliseconds) {
    const Dictionary track = Dictionary::make();
    const QString id = QString::fromUtf16(pid);
    track.set(keys::PersistentID, id);
    track.set(keys::Path, u'/' + id);
    if (artist) track.set(keys::Artist, QString::fromUtf16(artist));
    if (name) track.set(keys::Name, QString::fromUtf16(name));
    track.set(keys::TotalTime, std::move(milliseconds));
    state.library.mMusicLibrarySortedTracks.append(track);
    return track;
  }

  /// The groups found, as "1:A,B 2:C,D".
  QString scan() {
    scanner.scanLibraryForDuplicatesThread();
    QStringList groups;
    qint64 last = 0;
    for (const Value &value : state.lists.mDuplicateSongDicts) {
      const Dictionary &row = value.toDictionary();
      const qint64 group = row.value(keys::DupeGroup).toInteger();
      const QString pid = row.value(keys::PersistentID).toText();
      if (group == last) {
        groups.last() += u',' + pid;
      } else {
        groups.append(QString::number(group) + u':' + pid);
      }
      last = group;
    }
    return groups.join(u' ');
  }

  ScriptedView view;
  AppState state{view};
  DuplicateScanner scanner{state};
  QSet<QString> gone;
  QStringList asked;
};
