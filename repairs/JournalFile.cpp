#include "repairs/JournalFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstring>

#include "platform/FolderEntry.h"
#include "platform/WriteAll.h"
#include "support/BMLog.h"
#include "support/Checksum.h"

namespace {

constexpr qint64 kFileBytes = JournalFile::kSlots * JournalFile::kSlotBytes;

QString told(const char *step, int reason) {
  return QStringLiteral("%1: %2").arg(QString::fromLatin1(step), QString::fromUtf8(std::strerror(reason)));
}

QByteArray checksumOf(QByteArrayView line) {
  return QByteArray::number(CRC(line), 16).rightJustified(8, '0');
}

/// Checksum, blank, line, blanks, line feed.
QByteArray slotOf(QByteArrayView line) {
  QByteArray slot(JournalFile::kSlotBytes, ' ');
  slot.back() = '\n';
  if (line.isEmpty()) return slot;
  slot.replace(0, 8, checksumOf(line));
  return slot.replace(9, line.size(), line.toByteArray());
}

QByteArray lineOf(QByteArrayView slot) {
  const QByteArray line = slot.sliced(9).toByteArray().trimmed();
  return slotOf(line) == slot ? line : QByteArray();
}

bool writeAt(int handle, QByteArrayView bytes, qint64 place) {
  return ::lseek(handle, off_t(place), SEEK_SET) >= 0 && writeAll(handle, bytes);
}

}  // namespace

JournalFile::Opening JournalFile::fail(const char *step, QString *error, int reason) {
  *error = told(step, reason);
  close();
  return Opening::Failed;
}

JournalFile::Opening JournalFile::open(QString *error) {
  close();
  const QString folder = QFileInfo(path).path();
  QDir().mkpath(folder);
  handle = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC,
                  0600);
  if (handle < 0) return fail("opening", error, errno);
  struct stat facts = {};
  if (::fstat(handle, &facts) != 0) return fail("its facts", error, errno);
  if (!S_ISREG(facts.st_mode)) return fail("no regular file", error, EINVAL);
  if (::flock(handle, LOCK_EX | LOCK_NB) != 0) {
    const int reason = errno;
    if (reason != EWOULDBLOCK) return fail("locking", error, reason);
    close();
    return Opening::HeldByAnother;
  }
  // As it is now that nobody else is making it.
  if (::fstat(handle, &facts) != 0) return fail("its facts", error, errno);
  if (facts.st_size >= kFileBytes) return Opening::Done;
  if (!lengthen(facts.st_size) || !folderEntry::syncFolder(QFile::encodeName(folder)))
    return fail("making", error, errno);
  return Opening::Done;
}

void JournalFile::close() {
  if (handle < 0) return;
  if (isUnsynced && ::fdatasync(handle) != 0) BMLog("the merge journal may be older on the disk");
  isUnsynced = false;
  ::close(handle);
  handle = -1;
}

bool JournalFile::lengthen(qint64 from) {
  // What has begun to be a slot is written anew.
  for (qint64 slot = from / kSlotBytes; slot < kSlots; ++slot) {
    if (!writeAt(handle, slotOf({}), slot * kSlotBytes)) return false;
  }
  return ::fsync(handle) == 0;
}

std::vector<QByteArray> JournalFile::lines() const {
  std::vector<QByteArray> found;
  QFile file;
  if (handle < 0 || !file.open(handle, QIODevice::ReadOnly | QIODevice::Unbuffered)) return found;
  file.seek(0);
  const QByteArray bytes = file.read(kFileBytes);
  for (qsizetype place = 0; place + kSlotBytes <= bytes.size(); place += kSlotBytes) {
    const QByteArrayView slot = QByteArrayView(bytes).sliced(place, kSlotBytes);
    found.push_back(lineOf(slot));
    if (found.back().isEmpty() && slot != slotOf({}))
      BMLog("slot %d of the merge journal cannot be read, and counts as blank", int(found.size()));
  }
  return found;
}

bool JournalFile::write(qsizetype slot, QByteArrayView line) {
  if (handle < 0 || slot < 0 || slot >= kSlots || line.size() > kLongestLine) {
    errno = EINVAL;
    return false;
  }
  return writeAt(handle, slotOf(line), slot * kSlotBytes);
}

bool JournalFile::put(qsizetype slot, QByteArrayView line, QString *error) {
  if (write(slot, line) && ::fdatasync(handle) == 0) {
    isUnsynced = false;
    return true;
  }
  *error = told("writing", errno);
  return false;
}

void JournalFile::putSoon(qsizetype slot, QByteArrayView line) {
  if (!write(slot, line)) BMLog("a slot of the merge journal stays as it is: %@", told("writing", errno));
  isUnsynced = true;
}
