#include "audio/tags/FrameIDs.h"

namespace frameids {

const QList<QByteArray> &internalRecognizedFrameIDs() {
  static const QList<QByteArray> ids{"PIC",  "APIC", "TCP",  "TCMP", "TT2",  "TIT2", "TP1",
                                     "TPE1", "TAL",  "TALB", "TCO",  "TCON", "TRK",  "TRCK",
                                     "TBP",  "TBPM", "ULT",  "USLT", "TYE",  "TYER", "TDRC"};
  return ids;
}

const QList<QByteArray> &iTunesRecognizedFrameIDs() {
  static const QList<QByteArray> ids =
      internalRecognizedFrameIDs() +
      QList<QByteArray>{"COM", "COMM", "RVA", "RVAD", "TCM", "TCOM", "TP2", "TPE2", "TPA", "TPOS",
                        "TPB", "TPUB", "TS2", "TSO2", "TSA", "TSOA", "TSC", "TSOC", "TSP", "TSOP",
                        "TSS", "TSSE", "TST", "TSOT", "TT1", "TIT1", "TT3", "TIT3"};
  return ids;
}

const QList<QByteArray> &dangerousFrameIDs() {
  static const QList<QByteArray> none;
  return none;
}

QByteArray frameIDUpgrade(const QByteArray &id) {
  for (const QList<QByteArray> *ids : {&internalRecognizedFrameIDs(), &iTunesRecognizedFrameIDs()}) {
    const qsizetype at = ids->indexOf(id);
    if (at >= 0 && at + 1 < ids->size()) return ids->at(at + 1);
  }
  return id;
}

}  // namespace frameids
