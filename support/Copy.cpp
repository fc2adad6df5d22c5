#include "support/Copy.h"

#include "support/BMLog.h"

Value copyDeep(const Value &source) {
  return copyTree(source, [](qsizetype index, qsizetype size) {
    BMLog("copyDeep nil object in array (%d of %d)", index, size);
  });
}

Array copyDeep(const Array &source) {
  return copyDeep(Value(source)).toArray();
}

Dictionary copyDeep(const Dictionary &source) {
  return copyDeep(Value(source)).toDictionary();
}

Value recursiveCopyAutoreleased(const Value &source) {
  return copyDeep(source);
}

qint64 indexOfObjectWithPointer(const Array &array, const Value &object) {
  if (!object.isContainer()) return kNotFound;
  const auto same = [&](const Value &member) {
    if (member.type() != object.type()) return false;
    return object.type() == Value::Type::Array ? member.toArray().isSame(object.toArray())
                                               : member.toDictionary().isSame(object.toDictionary());
  };
  const Value *found = std::find_if(array.begin(), array.end(), same);
  return found == array.end() ? kNotFound : qint64(found - array.begin());
}
