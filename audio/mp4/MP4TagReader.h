#pragma once

#include <optional>

#include "audio/mp4/AACInfoTag.h"

class Atom;

/// Takes a tag's attributes, pictures and audio facts out of a file's atoms. One use.
class MP4TagReader {
 public:
  /// Both outlive the reader.
  MP4TagReader(AACInfoTag &into, Atom &fileRoot) : tag(into), root(fileRoot) {}

  void read();

 private:
  void readText(const QString &path, Key key);
  void readTrack();
  void readGenre();
  void readNumbers();
  void readPictures();
  void readFacts();
  void readSampleEntry();
  QByteArray payloadOf(const QString &path) const;

  AACInfoTag &tag;
  Atom &root;
  Atom *list = nullptr;
  bool isProtected = false;
  std::optional<quint32> sampleRate, bitRate;
};
