#pragma once

#include <QByteArrayView>
#include <QString>
#include <vector>

/// A small file of slots of one length, which one process at a time has and writes in place: a slot holds a
/// line of text with its checksum, or blanks. A slot that was torn, or that somebody else has written, counts
/// as blank. All blocks are there from the beginning, so that a disk that fills up meanwhile does not matter.
/// One thread at a time.
class JournalFile {
 public:
  static constexpr qsizetype kSlots = 128, kSlotBytes = 512;
  /// The longest line that fits.
  static constexpr qsizetype kLongestLine = kSlotBytes - 10;

  explicit JournalFile(const QString &filePath) : path(filePath) {}
  JournalFile(const JournalFile &) = delete;
  ~JournalFile() { close(); }

  enum class Opening { Done, HeldByAnother, Failed };
  /// Opens the file, or makes it with its folders, and has it until `close` or the end of the process,
  /// however that comes. `error` says what failed and why. A link is not followed.
  [[nodiscard]] Opening open(QString *error);
  /// Gives the file back; nothing if it is not open.
  void close();
  bool isOpen() const { return handle >= 0; }

  /// The lines of all slots; empty for a blank one. None of a file that is not open.
  std::vector<QByteArray> lines() const;
  /// Puts a line, or nothing, in a slot. True once it is on the disk.
  [[nodiscard]] bool put(qsizetype slot, QByteArrayView line, QString *error);
  /// The same, but what was put is on the disk only behind the next `put` or `close`: for what may be lost
  /// with the machine's power. A failure is met there.
  void putSoon(qsizetype slot, QByteArrayView line);

 private:
  Opening fail(const char *step, QString *error, int reason);
  bool lengthen(qint64 from);
  bool write(qsizetype slot, QByteArrayView line);

  const QString path;
  int handle = -1;
  bool isUnsynced = false;
};
