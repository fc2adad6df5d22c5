#include "tests/keeper/server/KeeperProcess.h"

#include <signal.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <thread>

#include "platform/keeper/StoreSchema.h"
#include "tests/fixtures/LibraryText.h"

using namespace std::chrono_literals;

namespace {

QCoreApplication &application() {
  static int count = 1;
  static char name[] = "test";
  static char *arguments[] = {name, nullptr};
  static QCoreApplication made(count, arguments);
  return made;
}

/// Programs that are started from here see the same.
QString madeRuntimeFolder(const QTemporaryDir &temporary) {
  application();
  const QString home = temporary.path() + QStringLiteral("/home"),
                run = temporary.path() + QStringLiteral("/run");
  QDir().mkpath(home);
  QDir().mkpath(run);
  qputenv("HOME", QFile::encodeName(home));
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(run));
  for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
    qputenv(name, QFile::encodeName(home + u'/' + QString::fromLatin1(name)));
  return temporary.path();
}

}  // namespace

KeeperProcess::KeeperProcess()
    : place(KeeperPlace::ofUser(madeRuntimeFolder(temporary))), host(place, std::nullopt) {}

KeeperProcess::~KeeperProcess() {
  if (process.state() != QProcess::NotRunning) killNow();
}

QString KeeperProcess::storePath() const {
  return libraryFolder() + u'/' + storeSchema::kFileName;
}

void KeeperProcess::writeFile(const QString &file, const QByteArray &bytes) const {
  QDir().mkpath(QFileInfo(file).path());
  QFile written(file);
  ASSERT_TRUE(written.open(QIODevice::WriteOnly) && written.write(bytes) == bytes.size());
}

QByteArray KeeperProcess::readFile(const QString &file) {
  QFile read(file);
  return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray();
}

QByteArray KeeperProcess::libraryXml(int tracks) {
  using libraryText::text;
  QByteArray list, items;
  for (int i = 1; i <= tracks; ++i) {
    const QByteArray number = QByteArray::number(i);
    list +=
        libraryText::track(i, "Name " + number,
                           text("Artist", "Artist") + text("Persistent ID", number.rightJustified(16, '0')) +
                               text("Track Type", "File"));
    items += "<dict><key>Track ID</key><integer>" + number + "</integer></dict>\n";
  }
  return libraryText::library(list, "<dict>" + text("Name", "P") +
                                        text("Playlist Persistent ID", "00000000000000FF") +
                                        "<key>Playlist Items</key><array>" + items + "</array></dict>");
}

void KeeperProcess::start(const QStringList &arguments) {
  process.setProcessChannelMode(QProcess::ForwardedChannels);
  process.start(QStringLiteral(TALLYFEN_KEEPER), arguments);
  ASSERT_TRUE(process.waitForStarted());
  ASSERT_TRUE(eventually([this] { return status().has_value() || process.state() == QProcess::NotRunning; }));
  ASSERT_EQ(process.state(), QProcess::Running) << process.exitCode();
}

int KeeperProcess::runToEnd(const QStringList &arguments) {
  QProcess other;
  other.setProcessChannelMode(QProcess::MergedChannels);
  other.start(QStringLiteral(TALLYFEN_KEEPER), arguments);
  EXPECT_TRUE(other.waitForFinished());
  said = other.readAll().toStdString();
  return other.exitCode();
}

void KeeperProcess::killNow() {
  process.kill();
  EXPECT_TRUE(process.waitForFinished());
}

int KeeperProcess::quit() {
  EXPECT_EQ(tell(QStringLiteral("quit")), QString());
  return waitForEnd();
}

int KeeperProcess::waitForEnd() {
  if (process.state() != QProcess::NotRunning && !process.waitForFinished()) return -2;
  return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

QString KeeperProcess::run(const QString &script) {
  const ScriptOutcome outcome = host.run(script);
  if (outcome.failure) return QStringLiteral("error %1").arg(outcome.failure->number.value_or(0));
  return outcome.result ? outcome.result->stringValue().value_or(QString()) : QStringLiteral("nothing");
}

QString KeeperProcess::tell(const QString &command) {
  return run(QStringLiteral("tell application \"Music Keeper\" to ") + command);
}

std::optional<keeperProtocol::Status> KeeperProcess::status(int milliseconds) const {
  return statusOfKeeper(place, std::chrono::milliseconds(milliseconds));
}

bool KeeperProcess::eventually(const std::function<bool()> &holds, int seconds) {
  QElapsedTimer elapsed;
  elapsed.start();
  while (!holds()) {
    if (elapsed.elapsed() > seconds * 1000) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    std::this_thread::sleep_for(2ms);
  }
  return true;
}
