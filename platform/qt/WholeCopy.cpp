#include "platform/qt/WholeCopy.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <memory>
#include <optional>

#include "platform/WriteAll.h"

namespace {

/// An open file; closed with its owner, `errno` kept.
class Handle {
 public:
  Handle(const QByteArray &path, int flags, mode_t mode = 0)
      : number(::open(path.constData(), flags | O_CLOEXEC, mode)) {}
  ~Handle() {
    const int reason = errno;
    if (number >= 0) ::close(number);
    errno = reason;
  }
  Handle(const Handle &) = delete;
  Handle &operator=(const Handle &) = delete;
  operator int() const { return number; }

 private:
  const int number;
};

constexpr size_t kChunk = 1 << 20;

/// Fills the buffer from a file; fewer bytes only at its end, -1 on failure.
ssize_t readFully(int file, char *buffer) {
  size_t filled = 0;
  while (filled < kChunk) {
    const ssize_t count = ::read(file, buffer + filled, kChunk - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return -1;
    if (count == 0) break;
    filled += size_t(count);
  }
  return ssize_t(filled);
}

bool pour(int source, int target) {
  const auto buffer = std::make_unique<char[]>(kChunk);
  for (ssize_t count; (count = readFully(source, buffer.get())) != 0;) {
    if (count < 0 || !writeAll(target, {buffer.get(), count})) return false;
  }
  return true;
}

/// Compares two files from their beginnings; the second as the disk has it, as far as the system can forget
/// what it remembers of it.
bool isSame(int source, int target) {
  ::posix_fadvise(target, 0, 0, POSIX_FADV_DONTNEED);
  const auto one = std::make_unique<char[]>(kChunk), other = std::make_unique<char[]>(kChunk);
  while (true) {
    const ssize_t count = readFully(source, one.get()), copied = readFully(target, other.get());
    if (count < 0 || copied < 0) return false;
    if (count != copied || std::memcmp(one.get(), other.get(), size_t(count)) != 0) {
      errno = EIO;
      return false;
    }
    if (count == 0) return true;
  }
}

/// Owner as far as the system lets us, permissions, times.
bool giveFacts(int file, const struct stat &facts) {
  [[maybe_unused]] const int owned = ::fchown(file, facts.st_uid, facts.st_gid);
  const struct timespec times[2] = {facts.st_atim, facts.st_mtim};
  return ::fchmod(file, facts.st_mode & 07777) == 0 && ::futimens(file, times) == 0;
}

std::optional<QByteArray> linkText(const QByteArray &path) {
  QByteArray text(PATH_MAX, Qt::Uninitialized);
  const ssize_t length = ::readlink(path.constData(), text.data(), size_t(text.size()));
  return length < 0 ? std::nullopt : std::optional(text.left(length));
}

/// The names that a folder holds.
std::optional<std::vector<QByteArray>> namesIn(const QByteArray &folder) {
  const std::unique_ptr<DIR, int (*)(DIR *)> list(::opendir(folder.constData()), ::closedir);
  if (!list) return std::nullopt;
  std::vector<QByteArray> names;
  errno = 0;
  while (const dirent *entry = ::readdir(list.get())) {
    if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
      names.emplace_back(entry->d_name);
  }
  return errno == 0 ? std::optional(std::move(names)) : std::nullopt;
}

}  // namespace

bool WholeCopy::make() {
  entries.clear();
  if (copyEntry({})) return true;
  removeCopy();
  return false;
}

bool WholeCopy::copyEntry(const QByteArray &relative) {
  Entry entry{relative, {}};
  if (::lstat((from + relative).constData(), &entry.facts) != 0) return false;
  const mode_t kind = entry.facts.st_mode & S_IFMT;
  if (kind != S_IFREG && kind != S_IFLNK && kind != S_IFDIR) {
    errno = EINVAL;
    return false;
  }
  entries.push_back(entry);
  // Another file system that is mounted inside is not thrown away with the folder.
  if (entry.facts.st_dev != entries.front().facts.st_dev) {
    errno = EXDEV;
    return false;
  }
  return kind == S_IFREG ? copyFile(entry) : kind == S_IFLNK ? copyLink(entry) : copyFolder(entry);
}

bool WholeCopy::copyFile(const Entry &entry) const {
  const Handle source(from + entry.relative, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
  const Handle target(to + entry.relative, O_RDWR | O_CREAT | O_EXCL, 0600);
  if (source < 0 || target < 0 || !pour(source, target)) return false;
  if (!giveFacts(target, entry.facts) || ::fsync(target) != 0) return false;
  return ::lseek(source, 0, SEEK_SET) == 0 && ::lseek(target, 0, SEEK_SET) == 0 && isSame(source, target);
}

bool WholeCopy::copyLink(const Entry &entry) const {
  const std::optional<QByteArray> text = linkText(from + entry.relative);
  return text && ::symlink(text->constData(), (to + entry.relative).constData()) == 0;
}

bool WholeCopy::copyFolder(const Entry &entry) {
  const QByteArray source = from + entry.relative, target = to + entry.relative;
  // What could not be removed afterwards is not worth the copying.
  if (::faccessat(AT_FDCWD, source.constData(), W_OK | X_OK, AT_EACCESS) != 0) return false;
  const auto names = namesIn(source);
  if (!names || ::mkdir(target.constData(), 0700) != 0) return false;
  for (const QByteArray &name : *names) {
    if (!copyEntry(entry.relative + '/' + name)) return false;
  }
  const Handle folder(target, O_RDONLY | O_DIRECTORY);
  return folder >= 0 && giveFacts(folder, entry.facts) && ::fsync(folder) == 0;
}

bool WholeCopy::isUnchanged(const Entry &entry) const {
  struct stat now = {};
  if (::lstat((from + entry.relative).constData(), &now) != 0) return false;
  const struct stat &then = entry.facts;
  const bool same = now.st_ino == then.st_ino && now.st_dev == then.st_dev && now.st_size == then.st_size &&
                    now.st_ctim.tv_sec == then.st_ctim.tv_sec && now.st_ctim.tv_nsec == then.st_ctim.tv_nsec;
  if (!same) errno = EBUSY;
  return same;
}

WholeCopy::Removed WholeCopy::removeSource() const {
  for (const Entry &entry : entries) {
    if (!isUnchanged(entry)) return Removed::Nothing;
  }
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    const bool isFolder = S_ISDIR(entry->facts.st_mode);
    const QByteArray path = from + entry->relative;
    // A folder has changed by what went out of it; what came in keeps it from being removed.
    const bool gone =
        isFolder ? ::rmdir(path.constData()) == 0 : isUnchanged(*entry) && ::unlink(path.constData()) == 0;
    if (!gone) return entry == entries.rbegin() ? Removed::Nothing : Removed::Some;
  }
  return Removed::All;
}

void WholeCopy::removeCopy() const {
  const int reason = errno;
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    const QByteArray path = to + entry->relative;
    if (S_ISDIR(entry->facts.st_mode)) {
      ::rmdir(path.constData());
    } else {
      ::unlink(path.constData());
    }
  }
  errno = reason;
}
