#pragma once

#include <QHash>

/// Gives equal things one small number, from 0 on in the order of first sight. One thread.
template <class Thing>
class Numbering {
 public:
  quint32 of(const Thing &thing) {
    const auto fresh = quint32(numbers.size());
    quint32 &number = numbers[thing];
    if (quint32(numbers.size()) > fresh) number = fresh;
    return number;
  }

 private:
  QHash<Thing, quint32> numbers;
};
