#include "repairs/MergeReasons.h"

#include <algorithm>

#include "app/state/LocalizedAlert.h"
#include "bridge/LocalizedMessage.h"
#include "support/Format.h"
#include "values/Keys.h"

using namespace mergeReasons;

namespace {

enum class Test { TracksAreMissing, BeginsWith, Equals, Contains, Always };

struct Rule {
  Test test;
  QStringView text;
  MergeReaction reaction;
  /// The beginning of the keys of its texts.
  QStringView alert;
  /// The rule's text is followed by a path, or by words that name it.
  bool tellsPath = false;
};

// The order decides. Whatever the reason was, missing tracks are taken to be the cause.
const Rule kRules[] = {
    {Test::TracksAreMissing, u"", MergeReaction::Sheet, u"MergeFailWithMissingFiles"},
    {Test::BeginsWith, kBroken, MergeReaction::BrokenPlaylist, u"PlaylistBrokenSongsUnknown"},
    {Test::Equals, kTrashError, MergeReaction::TrashFailure, u"TrashFailure"},
    {Test::BeginsWith, kFolderError, MergeReaction::Sheet, u"MergeFolderError", true},
    {Test::BeginsWith, kJournalError, MergeReaction::Sheet, u"MergeJournalError", true},
    {Test::Contains, kTimedOut, MergeReaction::Retry, u""},
    {Test::BeginsWith, kMissingError, MergeReaction::Sheet, u"MergeMissingError", true},
    {Test::BeginsWith, kDeleteError, MergeReaction::Sheet, u"MergeDeleteError", true},
    {Test::Always, u"", MergeReaction::Sheet, u"PlaylistOtherError"},
};

bool applies(const Rule &rule, const QString &reason, bool tracksAreMissing) {
  switch (rule.test) {
    case Test::TracksAreMissing:
      return tracksAreMissing;
    case Test::BeginsWith:
      return reason.startsWith(rule.text);
    case Test::Equals:
      return reason == rule.text;
    case Test::Contains:
      return reason.contains(rule.text);
    case Test::Always:
      break;
  }
  return true;
}

const Rule &ruleFor(const QString &reason, bool tracksAreMissing) {
  return *std::find_if(std::begin(kRules), std::end(kRules),
                       [&](const Rule &rule) { return applies(rule, reason, tracksAreMissing); });
}

Alert alertWithMessage(QStringView keyStem, const QString &message) {
  const QString stem = keyStem.toString();
  return localizedAlert(stem + QStringLiteral("Title"), message, {stem + QStringLiteral("Button")}, true);
}

QStringList textsOf(const Value &list) {
  QStringList texts;
  const Array &values = list.toArray();
  for (const Value &text : values) texts.append(text.toText());
  return texts;
}

/// What a message tells of a reason.
QString toldOf(const QString &reason, const Rule &rule) {
  return rule.tellsPath ? reason.mid(rule.text.size()) : reason;
}

bool isAboutFile(const QString &reason) {
  return reason.startsWith(kMissingError) || reason.startsWith(kDeleteError);
}

/// The path in a reason about a file; empty for any other, and for a track without one.
QString pathIn(const QString &reason) {
  const qsizetype begin = reason.indexOf(u':') + 1;
  return isAboutFile(reason) && reason.indexOf(u'/') == begin ? reason.mid(begin) : QString();
}

/// The texts as lines; of 11 or more the first nine and a sign that there are others.
QString linesOf(QStringList lines) {
  constexpr qsizetype kMost = 10;
  if (lines.size() > kMost) lines = lines.first(kMost - 1) << QStringLiteral("...");
  return lines.isEmpty() ? localizedMessage(QStringLiteral("Unknown")) : lines.join(u'\n');
}

}  // namespace

bool mergeReasons::isFailure(QStringView answer) {
  return answer.startsWith(kBroken) || answer.startsWith(kError);
}

QString mergeReasons::aboutFile(QStringView kind, const QString &path) {
  return formatText(kind.toString() + QStringLiteral("%@"), {path});
}

MergeReaction reactionToReason(const QString &reason, bool tracksAreMissing) {
  return ruleFor(reason, tracksAreMissing).reaction;
}

Alert alertAboutReason(const QString &reason, bool tracksAreMissing) {
  const Rule &rule = ruleFor(reason, tracksAreMissing);
  const QString messageKey = rule.alert.toString() + QStringLiteral("Message");
  return alertWithMessage(rule.alert, localizedMessage(messageKey, toldOf(reason, rule)));
}

MergeFailure failureAboutReason(const QString &reason, bool tracksAreMissing, const QString &title,
                                const Dictionary &details) {
  const Rule &rule = ruleFor(reason, tracksAreMissing);
  const QString what = localizedMessage(rule.alert.toString() + QStringLiteral("Title"));
  MergeFailure failure{title, pathIn(reason), what};
  QString more;
  if (reason.startsWith(kBroken)) {
    more = (textsOf(details.value(keys::playlists)) + textsOf(details.value(keys::tracksummaries)))
               .join(QStringLiteral(", "));
  } else if (!isAboutFile(reason) && reason != kTrashError) {
    more = toldOf(reason, rule);
  }
  if (!more.isEmpty()) failure.reason += QStringLiteral(": ") + more;
  return failure;
}

Alert alertAboutBrokenPlaylist(const Dictionary &details) {
  const QString playlists = linesOf(textsOf(details.value(keys::playlists)));
  const QString songs = linesOf(textsOf(details.value(keys::tracksummaries)));
  return alertWithMessage(
      u"PlaylistBrokenSongsUnknown",
      localizedMessage(QStringLiteral("PlaylistBrokenSongsUnknownMessage"), playlists, songs));
}
