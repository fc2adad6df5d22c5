#include "app/library/TrackFilter.h"

#include "values/Keys.h"

namespace {

QStringList texts(const Array &array) {
  QStringList list;
  for (const Value &value : array) {
    if (value.isText()) list.append(value.toText());
  }
  return list;
}

}  // namespace

TrackFilter::TrackFilter(const Dictionary &resources)
    : ignoreKinds(texts(resources.value(keys::ignoreKinds).toArray())),
      ignoreKindSubstrings(texts(resources.value(keys::ignoreKindSubstrings).toArray())) {}

TrackFilter::Verdict TrackFilter::verdictOn(const Dictionary &track) {
  const Value &kind = track.value(keys::Kind);
  if (kind.isNull()) return Verdict::NoKind;
  if (track.value(keys::HasVideo).toBool()) return Verdict::Video;
  if (!track.contains(keys::TotalTime)) return Verdict::NoDuration;
  auto known = judged.find(kind.toText());
  if (known == judged.end()) known = judged.insert(kind.toText(), verdictOnKind(kind.toText()));
  if (*known != Verdict::Kept) return *known;
  return track.value(keys::Location).toText().endsWith(QStringLiteral(".m4r")) ? Verdict::Ringtone
                                                                               : Verdict::Kept;
}

TrackFilter::Verdict TrackFilter::verdictOnKind(const QString &kind) const {
  if (ignoreKinds.contains(kind)) return Verdict::IgnoredKind;
  for (const QString &part : ignoreKindSubstrings) {
    // An empty entry would be found in every kind; a platform search for nothing finds nothing.
    if (!part.isEmpty() && kind.contains(part)) return Verdict::IgnoredKindPart;
  }
  return Verdict::Kept;
}
