#include "keeper/server/LibraryNotes.h"

namespace libraryNotes {

namespace {

const QString kWaitingFile = QStringLiteral("file to import");
const QString kUntouchedStamp = QStringLiteral("untouched stamp");

}  // namespace

QString waitingFile(LibraryStore &store) {
  const Value file = store.note(kWaitingFile);
  return file.isText() ? file.toText() : QString();
}

void setWaitingFile(LibraryStore &store, const QString &file) {
  store.setNote(kWaitingFile, file);
}

void setUntouched(LibraryStore &store) {
  store.setNote(kUntouchedStamp, store.changeStamp());
}

bool isUntouched(LibraryStore &store) {
  const Value stamp = store.note(kUntouchedStamp);
  return stamp.isNumber() && stamp.toInteger() == store.changeStamp();
}

}  // namespace libraryNotes
