// How an MPEG file's tag goes back into its file.

#include "audio/FileReader.h"
#include "audio/FileRewriter.h"
#include "audio/tags/ID3Writer.h"
#include "audio/tags/MP3InfoTag.h"
#include "audio/tags/TextEncoders.h"
#include "bridge/LocalizedMessage.h"
#include "support/BMLog.h"

namespace {

constexpr qint64 kShortestAudio = 101;
constexpr qsizetype kTextField = 30, kYearField = 4;

/// True if an MP4 box opens the file, or what stands behind its tag. The samples of such a file are found by
/// their place in it, and a tag ahead would move them.
bool holdsMP4(const QString &path, quint64 tagLength) {
  const FileReader file(path);
  return file.read(4, 4) == "ftyp" || file.read(qint64(tagLength) + 4, 4) == "ftyp";
}

bool fitsField(const QString &text, qsizetype length) {
  return text.size() <= length && id3text::exactLatin1(text);
}

}  // namespace

QString MP3InfoTag::writeVersion() const {
  if (mReadVersionString.startsWith(u"2.2")) return QStringLiteral("2.2.0");
  if (mReadVersionString.startsWith(u"2.4")) return QStringLiteral("2.4.0");
  const bool staysOld = mReadVersionString.startsWith(u'1') && canWriteID3v11WithoutLoss();
  return staysOld ? QStringLiteral("1.1") : QStringLiteral("2.3.0");
}

bool MP3InfoTag::canWriteID3v11WithoutLoss() const {
  if (numberOfImages() > 0 || firstObjectForFrameIDOrID("COMM", "COM")) return false;
  for (const QString &text : {title(), artist(), album()}) {
    if (!fitsField(text, kTextField)) return false;
  }
  if (year().size() > kYearField || track().contains(u'/')) return false;
  return genres().isEmpty() || indexOfGenre(genres()) != kNotFound;
}

bool MP3InfoTag::modifySongFileAtPathError(const QString &path, QString *error) {
  const auto refuse = [error](const QString &text) {
    if (error) *error = text;
    return false;
  };
  try {
    const auto now = tagWithMPEGFile(path);
    FileRewriter file;
    if (!now || !file.open(path) || holdsMP4(path, now->_id3v2Range.length)) {
      return refuse(localizedMessage(u"ErrorCannotOpenForWrite"_qs));
    }
    const ID3Writer writer(*this);
    const QString version = writeVersion();
    const bool isOld = version.startsWith(u'1');
    const QByteArray data = isOld ? writer.dataForID3v11()
                            : version.startsWith(u"2.2")
                                ? writer.dataForID3v22()
                                : writer.dataForID3V23orV24(version.startsWith(u"2.4"));
    if (data.isEmpty()) return refuse(localizedMessage(u"ErrorCannotMakeID3"_qs));
    const qint64 start = qint64(now->_id3v2Range.length);
    const qint64 length = file.size() - start - qint64(now->_id3v1Range.length);
    if (length < kShortestAudio) return refuse(localizedMessage(u"ErrorCannotOpenForWrite"_qs));
    const bool hasBlock = now->_id3v1Range.length > 0;
    const QByteArray block = isOld ? data : hasBlock ? writer.dataForID3v11() : QByteArray();
    const QString failure = file.replaceAround(isOld ? QByteArray() : data, start, length, block);
    if (failure.isNull()) return true;
    BMLog("!! cannot write the tag of %@: %@", path, failure);
  } catch (const std::exception &problem) {
    BMLog("!! cannot write the tag of %@: %@", path, QString::fromUtf8(problem.what()));
  }
  return refuse(QStringLiteral("can't modify (an error occurred): "));
}
