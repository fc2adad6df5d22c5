#pragma once

#include "keeper/library/TrackFields.h"

/// The shapes that properties of tracks take in the library's keys. A fact can only be read.
namespace trackForms {

/// A text; the empty text is an absent key.
TrackField text(const QString &term, Key key);
TrackField textFact(const QString &term, Key key);
/// A whole number between two; 0 is an absent key.
TrackField whole(const QString &term, Key key, qint64 low, qint64 high);
TrackField wholeFact(const QString &term, Key key);
/// Stored only when true, or with `inverted` only when false.
TrackField flag(const QString &term, Key key, bool inverted = false);
TrackField flagFact(const QString &term, Key key);
/// A date; missing value where there is none.
TrackField date(const QString &term, Key key);
TrackField dateFact(const QString &term, Key key);
/// Seconds as a real number of milliseconds; 0 is an absent key.
TrackField seconds(const QString &term, Key key);
TrackField secondsFact(const QString &term, Key key);
/// 0 to 100; a value that the user gives is no longer a computed one.
TrackField rating(const QString &term, Key key, Key computed);
/// "user" or "computed".
TrackField ratingKind(const QString &term, Key computed);

}  // namespace trackForms
