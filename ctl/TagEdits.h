#pragma once

#include <QString>
#include <vector>

class AudioInfoTag;
class Options;

/// The changes that a command line asks of a tag, in its order.
class TagEdits {
 public:
  /// The options that make up the edits: those without a value, those with one, and all for the usage line.
  static QStringList flagNames();
  static QStringList valueNames();
  static QString usage();

  /// Takes the edits from the options. False with a line about the first that means nothing.
  [[nodiscard]] bool take(const Options &options, QString *error);
  /// Makes the changes in a tag in memory; pictures are read now. False with a line for the user from the
  /// first that cannot be made.
  [[nodiscard]] bool apply(AudioInfoTag &tag, QString *error) const;

 private:
  enum class Kind { Text, AddImage, RemoveImage, RemoveAllImages };
  struct Edit {
    Kind kind = Kind::Text;
    /// A field's name and its text, or a picture's path and its type, null if it was not told.
    QString field, text;
    qint64 index = 0;
  };

  QString add(const QString &option, const QString &value);
  QString addText(const QString &assignment);
  static QString apply(const Edit &edit, AudioInfoTag &tag);

  std::vector<Edit> edits;
};
