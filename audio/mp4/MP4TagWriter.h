#pragma once

#include <QByteArray>
#include <QString>

#include "audio/FileReader.h"
#include "audio/mp4/AACInfoTag.h"
#include "values/Date.h"

class Atom;
class FileRewriter;

/// Puts a tag's attributes and pictures into a file's "ilst". Changes of size are paid for by "free" atoms,
/// so that mostly the front of the file alone is written. The file must have an "ilst" already. One use.
class MP4TagWriter {
 public:
  explicit MP4TagWriter(const AACInfoTag &source) : tag(source) {}

  /// False if the file was not written; a text for the user, which may stay null, on failures that have one.
  bool modifySongFileAtPath(const QString &path, QString *error);

  /// Corrects the first track's 32-bit chunk offsets in a file's new image. False, with the image as it was,
  /// if they cannot be made right: without "mdat" or "stco", and where audio moves that other tables point
  /// to.
  static bool adjustChunkOffsetsInAtomDataOriginalFile(QByteArray &image, const FileReader &original);
  /// Sets the modification time of movie, first track and its media. False from the first that is missing.
  static bool setModifiedTimeInAtomData(Date date, QByteArray &image);

 private:
  void writeTexts(Atom &list);
  void writeText(Atom &list, const QString &text, const QString &item);
  void writeGenre(Atom &list);
  void writeTrack(Atom &list);
  void writeNumbers(Atom &list);
  void writePictures(Atom &list);
  static void setItem(Atom &list, const QString &item, const QByteArray &payload);
  static void removeItem(Atom &list, const QString &item);
  bool writeImage(const FileReader &original, FileRewriter &file, QByteArray &image, QString *error);

  const AACInfoTag &tag;
};
