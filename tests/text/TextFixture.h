#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <random>

#include "platform/Platform.h"
#include "platform/qt/IcuUnicode.h"
#include "text/Simplified.h"

/// Tests of texts: ICU in force, and no simplifiers before and after.
class TextFixture : public ::testing::Test {
 protected:
  TextFixture() {
    Platform services;
    services.unicode = &unicode;
    setPlatform(services);
    clearSimplifiers();
  }
  ~TextFixture() override {
    clearSimplifiers();
    setPlatform({});
  }

  /// A random text of up to `longest` letters of an alphabet.
  QString randomText(const QString &alphabet, int longest) {
    QString text;
    for (int left = int(random() % unsigned(longest + 1)); left > 0; --left)
      text += alphabet[qsizetype(random() % unsigned(alphabet.size()))];
    return text;
  }

  IcuUnicode unicode;
  std::mt19937 random{20240229};
};

inline void PrintTo(const QString &text, std::ostream *out) {
  *out << '"' << text.toStdString() << '"';
}
