#include <QCoreApplication>
#include <QFile>
#include <cstdio>

namespace {

int fail(const QString &line) {
  std::fprintf(stderr, "pack-atom-names: %s\n", qUtf8Printable(line));
  return 1;
}

}  // namespace

/// Packs a readable list of atom names (one a line, "#" begins a comment) into a run of names of four bytes
/// each.
int main(int argc, char *argv[]) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 3) return fail(QStringLiteral("usage: pack-atom-names LIST PACKED"));
  QFile list(arguments[1]);
  if (!list.open(QIODevice::ReadOnly)) return fail(QStringLiteral("cannot read ") + arguments[1]);
  QByteArray packed;
  for (const QString &raw : QString::fromUtf8(list.readAll()).split(u'\n')) {
    const QString line = raw.trimmed();
    if (line.isEmpty() || line.startsWith(u'#')) continue;
    // "©" is the one character beyond ASCII in such names; here and there it has the byte 0xA9.
    const QByteArray name = line.toLatin1();
    if (name.size() != 4) return fail(QStringLiteral("\"%1\" has not four characters").arg(line));
    packed += name;
  }
  QFile out(arguments[2]);
  if (!out.open(QIODevice::WriteOnly) || out.write(packed) != packed.size() || !out.flush()) {
    return fail(QStringLiteral("cannot write ") + arguments[2]);
  }
  return 0;
}
