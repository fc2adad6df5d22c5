#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <cstdio>

#include "platform/Platform.h"
#include "platform/qt/LibplistPropertyList.h"
#include "support/Compression.h"

namespace {

int fail(const QString &line) {
  std::fprintf(stderr, "pack-scripts: %s\n", qUtf8Printable(line));
  return 1;
}

bool write(const QString &path, const QByteArray &bytes) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

std::optional<QString> read(const QString &path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray bytes = file.readAll();
  return QUtf8StringView(bytes).isValidUtf8() ? std::optional(QString::fromUtf8(bytes)) : std::nullopt;
}

/// Puts an application's name into a script.
int nameApplication(const QString &application, const QString &from, const QString &to) {
  std::optional<QString> text = read(from);
  if (!text) return fail(QStringLiteral("cannot read ") + from);
  text->replace(QStringLiteral("\"iTunes\""), u'"' + application + u'"');
  return write(to, text->toUtf8()) ? 0 : fail(QStringLiteral("cannot write ") + to);
}

/// A script's text. A line "-- with NAME" stands for what several scripts share: "shared/NAME.applescript".
std::optional<QString> wholeScript(const QString &path) {
  static const QRegularExpression line(QStringLiteral("^-- with (\\w+)\n"),
                                       QRegularExpression::MultilineOption);
  std::optional<QString> text = read(path);
  while (text) {
    const QRegularExpressionMatch found = line.match(*text);
    if (!found.hasMatch()) break;
    const auto shared =
        read(QStringLiteral("%1/shared/%2.applescript").arg(QFileInfo(path).path(), found.captured(1)));
    if (!shared) return std::nullopt;
    text->replace(found.capturedStart(), found.capturedLength(), *shared);
  }
  return text;
}

int pack(const QString &packed, const QStringList &scripts) {
  const Dictionary table = Dictionary::make();
  for (const QString &path : scripts) {
    const std::optional<QString> text = wholeScript(path);
    if (!text) return fail(QStringLiteral("cannot read it and what it shares as UTF-8: ") + path);
    table.set(Key(QFileInfo(path).completeBaseName()), *text);
  }
  QString error;
  const QByteArray list = LibplistPropertyList().write(table, SystemPropertyList::Format::Xml, &error);
  if (list.isEmpty()) return fail(error);
  return write(packed, compressedData(list)) ? 0 : fail(QStringLiteral("cannot write ") + packed);
}

}  // namespace

/// Packs scripts into one file, a gzipped property list from name (the file's without its extension) to text;
/// or puts an application's name into one script.
int main(int argc, char *argv[]) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  Platform services;
  services.folders.temporary = QDir::tempPath();
  setPlatform(services);
  if (arguments.size() == 5 && arguments[1] == u"--for")
    return nameApplication(arguments[2], arguments[3], arguments[4]);
  if (arguments.size() > 2) return pack(arguments[1], arguments.mid(2));
  return fail(QStringLiteral("usage: pack-scripts PACKED SCRIPT... | --for APPLICATION SCRIPT NAMED"));
}
