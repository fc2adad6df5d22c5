#include "ctl/SettingTable.h"

#include <QHash>

#include "support/Preferences.h"

namespace settings {
namespace {

enum class Kind { Boolean, Integer, Real, Text, List, Any };

const QHash<QString, Kind> &table() {
  static const QHash<QString, Kind> kinds = [] {
    QHash<QString, Kind> made;
    const auto add = [&](Kind kind, std::initializer_list<QString> keys) {
      for (const QString &key : keys) made.insert(key, kind);
    };
    add(Kind::Boolean, {prefs::noMatchArtist,
                        prefs::noMatchTitle,
                        prefs::noMatchDuration,
                        prefs::matchAlbum,
                        prefs::matchFileKind,
                        prefs::matchFileSize,
                        prefs::noIgnoreLongTracks,
                        prefs::preferAudioFileType,
                        prefs::ignorePlurals,
                        prefs::noWarnAboutPhoneticOrPlurals,
                        prefs::suppressUntrustedMediaFolderAlert,
                        prefs::noScanAtStartup,
                        prefs::noWarnAboutLibSize,
                        prefs::subpathsUsingOS,
                        prefs::noSystemDeserialize,
                        prefs::noMergePlayedInfo,
                        prefs::noIntelligentPlaylistHandling,
                        prefs::noAdoptedPlaylist,
                        prefs::noStopForTrashFailure,
                        prefs::reportMinorErrors,
                        prefs::noWarnBigPlaylists,
                        prefs::noWarnAboutUnkeptTrash,
                        prefs::explainedDuplicates,
                        prefs::initialSetup,
                        prefs::relatedDrawer,
                        prefs::busy});
    add(Kind::Integer,
        {prefs::allowedDurationVariation, prefs::ignoreDurationMinimum, prefs::preferAudioFileBitRate,
         prefs::preferAudioFileTypeNumber, prefs::inconsistentMatchMethod, prefs::unkeptActionPolicy,
         prefs::updateCheckLevel, prefs::SUEnableAutomaticChecks});
    add(Kind::Real, {prefs::relatedHeight});
    add(Kind::Text, {prefs::manualMediaPath, prefs::unkeptPath, prefs::problemWinFrame,
                     prefs::prefsWindowOrigin, prefs::logDirectory});
    add(Kind::List, {prefs::preferInfoTypes, prefs::untrustedPIDs_3});
    add(Kind::Any,
        {prefs::preferAudioData15, prefs::preferAudioData, prefs::splitConfig, prefs::mainSplitConfig,
         prefs::matchFingerprint, prefs::fileScanEntireSystem, prefs::sandboxBookmarks});
    return made;
  }();
  return kinds;
}

QString nameOf(Kind kind) {
  switch (kind) {
    case Kind::Boolean:
      return QStringLiteral("true or false");
    case Kind::Integer:
      return QStringLiteral("a whole number");
    case Kind::Real:
      return QStringLiteral("a number");
    case Kind::Text:
      return QStringLiteral("a text");
    case Kind::List:
      return QStringLiteral("a list of words");
    default:
      return QStringLiteral("any value");
  }
}

bool belongs(const Value &value, Kind kind) {
  switch (kind) {
    case Kind::Boolean:
    case Kind::Integer:
    case Kind::Real:
      return value.isNumber();
    case Kind::Text:
      return value.isText();
    case Kind::List:
      return value.type() == Value::Type::Array;
    default:
      return true;
  }
}

Value meaningOf(const QString &text) {
  const QString lower = text.toLower();
  if (lower == QStringLiteral("true") || lower == QStringLiteral("yes")) return true;
  if (lower == QStringLiteral("false") || lower == QStringLiteral("no")) return false;
  bool isNumber = false;
  const qint64 whole = text.toLongLong(&isNumber);
  if (isNumber) return whole;
  const double real = text.toDouble(&isNumber);
  return isNumber && qIsFinite(real) ? Value(real) : Value(text);
}

Value listOf(const QString &text) {
  const Array list = Array::make();
  for (const QString &word : text.split(u' ', Qt::SkipEmptyParts)) list.append(word);
  return list;
}

}  // namespace

bool isKnown(const QString &key) {
  return table().contains(key);
}

Value parse(const QString &key, const QString &text, QString *error) {
  const Kind kind = table().value(key, Kind::Any);
  if (kind == Kind::Text) return text;
  if (kind == Kind::List) return listOf(text);
  const Value value = meaningOf(text);
  const bool isBoolean = value.type() == Value::Type::Boolean;
  if (kind == Kind::Any || (kind == Kind::Boolean && isBoolean)) return value;
  if (kind == Kind::Boolean && (text == QStringLiteral("0") || text == QStringLiteral("1")))
    return value.toBool();
  if (kind != Kind::Boolean && value.isNumber() && !isBoolean) return value;
  *error = QStringLiteral("%1 is %2, not \"%3\"").arg(key, nameOf(kind), text);
  return {};
}

bool parseAssignment(const QString &assignment, QString *key, Value *value, QString *error) {
  *key = assignment.section(u'=', 0, 0);
  if (!assignment.contains(u'=')) {
    *error = QStringLiteral("\"%1\" is not KEY=VALUE").arg(assignment);
    return false;
  }
  if (!isKnown(*key)) {
    *error = QStringLiteral("unknown setting \"%1\"").arg(*key);
    return false;
  }
  *value = parse(*key, assignment.section(u'=', 1), error);
  return !value->isNull();
}

QStringList complaints() {
  QStringList lines;
  QStringList known = table().keys();
  known.sort();
  for (const QString &key : known) {
    const Value stored = prefs::value(key);
    const Kind kind = table().value(key);
    if (stored.isNull() || belongs(stored, kind)) continue;
    const QString reading = kind == Kind::Boolean ? QString::fromLatin1(stored.toBool() ? "true" : "false")
                            : kind == Kind::Integer || kind == Kind::Real
                                ? QString::number(stored.toInteger())
                                : QStringLiteral("not set");
    lines << QStringLiteral("the setting %1 should be %2 and holds something else; read as %3")
                 .arg(key, nameOf(kind), reading);
  }
  return lines;
}

}  // namespace settings
