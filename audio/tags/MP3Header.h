#pragma once

#include <QByteArray>
#include <QString>

class FileReader;

/// The first believable MPEG audio frame behind a file's tag, and what its header says of the audio. At most
/// three reads of 8192 bytes, whatever the file's size. One thread. Bit rates are from ISO/IEC
/// 11172-3, 2.4.2.3 and 13818-3, 2.4.2.3.
class MP3Header {
 public:
  /// Looks behind a tag of so many bytes. True once a frame is settled on; the file is closed either way.
  /// Never throws.
  bool openFileWithTag(const QString &path, qint32 tagLength);
  void releaseAttributes();

  quint64 getFileSize() const { return fileSize; }
  /// 1 MPEG 1, 2 MPEG 2, 3 MPEG 2.5, 0 reserved.
  qint32 getVersion() const { return version; }
  /// 1, 2, 3; 0 reserved.
  qint32 getLayer() const { return layer; }
  /// Kilobits per second; 0 free, -1 for a bad index.
  qint32 getBitRate() const { return bitRate; }
  /// Hertz; 0 reserved.
  qint32 getFrequency() const { return frequency; }
  /// 0 stereo, 1 joint, 2 dual, 3 single.
  qint32 getChannels() const { return channels; }
  /// Whole seconds; 0 when the bit rate is free or unknown.
  qint32 getSeconds() const { return seconds; }
  qint32 getNumberOfFrames() const { return numberOfFrames; }
  bool getXINGHeaderFound() const { return XINGHeaderFound; }
  qint32 getStartFrame() const { return startFrame; }

  QString getVersionString() const;
  QString getLayerString() const;
  QString getBitRateString() const;
  QString getFrequencyString() const;
  QString getChannelString() const;
  QString getSecondsString() const;
  QString getEncodingString() const;
  /// The audio's fingerprint: there is none in this system; always empty.
  QByteArray getHash();

 private:
  bool lookBehindTag(const QString &path, qint32 tagLength);
  bool findHeaderIn(const FileReader &file, const QString &path);
  bool findHeader();
  bool decodeHeader();
  void readXingHeader(qint64 frame);
  qint32 stepBehind(qint64 frame) const;

  QByteArray buffer;
  QByteArray hash;
  qint32 startFrame = 0;
  qint32 bufferOffsetInFile = 0;
  quint64 fileSize = 0;
  qint32 version = 0;
  qint32 layer = 0;
  qint32 bitRate = 0;
  qint32 frequency = 0;
  qint32 channels = 0;
  qint32 seconds = 0;
  qint32 numberOfFrames = 0;
  bool XINGHeaderFound = false;
};
