#pragma once

#include <QString>
#include <QStringView>

/// What an ampersand in a text stands for.
struct AmpersandCode {
  /// The 16-bit code; 0 for no entity.
  char16_t code = 0;
  /// Code units from the ampersand to the entity's end, the semicolon included where there is one.
  qint32 length = 0;
};

/// The character entity that begins at `index`: "&name", "&#decimal" or "&#xhexadecimal", with or without a
/// semicolon. Numbers from 128 to 159 mean the Windows-1252 characters of those bytes. No entity gives code
/// 0.
AmpersandCode ampersandCodeEquivalentAtIndexCodeLength(QStringView text, qsizetype index);

/// The text with every character entity replaced by its character. What is no entity stays as it is; a text
/// without an ampersand is returned itself. Any thread.
QString stringByReplacingAmpersandCodes(const QString &text);

/// The text with each code unit above 126 as an entity: "&name;", or "&decimal;" for a code without a name.
/// The latter, without a "#", is for reading, not for the decoder. Any thread.
QString stringByInsertingAmpersandCodes(const QString &text);
