#include "repairs/MarkChooser.h"

#include <limits>

namespace {

constexpr qint32 kSmallest = std::numeric_limits<qint32>::min();
/// Behind every file that can be played, yet something to choose if all are like it.
constexpr qint32 kUnusable = kSmallest + 1;
/// A smaller file holds no song.
constexpr qint64 kSmallestSongBytes = 100000;
constexpr qint32 kProtectedKind = 4, kAnyUnprotectedKind = 6;

bool isPreferred(qint32 kind, qint32 preferredKind) {
  if (kind < 0 || preferredKind < 0) return false;
  return kind == preferredKind || (preferredKind == kAnyUnprotectedKind && kind != kProtectedKind);
}

}  // namespace

GroupMarks MarkChooser::choose(std::span<const Dictionary> group) {
  std::vector<AutomarkRow> gathered;
  for (const Dictionary &row : group) gathered.emplace_back(row);
  return choose(gathered);
}

GroupMarks MarkChooser::choose(std::vector<AutomarkRow> &group) {
  GroupMarks marks;
  if (group.empty()) return marks;
  rows.swap(group);
  chooseInfoRow(marks);
  chooseAudioRow(marks);
  rows.swap(group);
  return marks;
}

qint32 MarkChooser::collectTied(qint32 criterion) {
  qint32 best = kSmallest;
  tied.clear();
  for (qsizetype place = qsizetype(candidates.size()) - 1; place >= 0; --place) {
    const qsizetype candidate = candidates[size_t(place)];
    const qint32 score = rows[size_t(candidate)].infoScore(criterion);
    if (score < best) continue;
    if (score > best) tied.clear();
    tied.push_back(candidate);
    best = score;
  }
  return best;
}

void MarkChooser::chooseInfoRow(GroupMarks &marks) {
  marks.infoRow = qsizetype(rows.size()) - 1;
  candidates.clear();
  for (qsizetype row = 0; row < qsizetype(rows.size()); ++row) candidates.push_back(row);
  for (const qint32 criterion : rules.preferInfoTypes) {
    const qint32 best = collectTied(criterion);
    if (tied.size() == 1) {
      marks.infoRow = tied.front();
      marks.infoCriterion = criterion;
      marks.infoScore = best;
      return;
    }
    std::swap(candidates, tied);
  }
}

void MarkChooser::chooseAudioRow(GroupMarks &marks) {
  marks.audioRow = qsizetype(rows.size()) - 1;
  marks.audioScore = kSmallest;
  for (qsizetype row = qsizetype(rows.size()) - 1; row >= 0; --row) {
    const qint32 score = audioScore(rows[size_t(row)]);
    // The row of the information wins ties: nothing has to be copied then.
    const bool takesOver = row == marks.infoRow ? score >= marks.audioScore : score > marks.audioScore;
    if (!takesOver) continue;
    marks.audioRow = row;
    marks.audioScore = score;
  }
}

qint32 MarkChooser::audioScore(const AutomarkRow &row) {
  const qint32 kind = kindNumber(row.kind());
  qint32 score = row.audioScore(rules.preferAudioData15, rules.preferAudioFileBitRate, kind);
  constexpr quint32 kPreference = 1000000;
  if (isPreferred(kind, rules.preferredKind)) score = qint32(quint32(score) + kPreference);
  if (row.path().isEmpty()) return score;
  const std::optional<qint64> size = fileSize(row.path());
  const bool isUsable = size && (*size < 0 || *size >= kSmallestSongBytes);
  return isUsable ? score : kUnusable;
}

qint32 MarkChooser::kindNumber(const QString &kind) {
  // Equal texts of a library mostly share their memory.
  if (kind.constData() == lastKind.constData() && kind.size() == lastKind.size()) return lastKindNumber;
  auto known = knownKinds.constFind(kind);
  if (known == knownKinds.constEnd()) known = knownKinds.insert(kind, kinds.numberOf(kind));
  lastKind = kind;
  lastKindNumber = *known;
  return lastKindNumber;
}

GroupMarks chooseMarks(std::span<const Dictionary> rows, const AutomarkRules &rules, const FileKinds &kinds,
                       const FileSizeOf &fileSize) {
  return MarkChooser(rules, kinds, fileSize).choose(rows);
}
