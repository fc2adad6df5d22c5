#include "tools/demo/LibraryXml.h"

#include <QUrl>

void LibraryXml::begin() {
  buffer.reserve(1100000);
  buffer +=
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<!DOCTYPE plist PUBLIC \"-//Apple Computer//DTD PLIST 1.0//EN\" "
      "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
      "<plist version=\"1.0\">\n<dict>\n";
  open.push_back(Container::Dictionary);
}

bool LibraryXml::finish() {
  buffer += "</dict>\n</plist>\n";
  failed = failed || file.write(buffer) != buffer.size() || !file.flush();
  return !failed;
}

void LibraryXml::integer(Key key, qint64 value) {
  keyLine(key);
  buffer += "<integer>";
  buffer += QByteArray::number(value);
  buffer += "</integer>";
  lineEnd();
}

void LibraryXml::text(Key key, const QString &value) {
  keyLine(key);
  buffer += "<string>";
  appendEscaped(value);
  buffer += "</string>";
  lineEnd();
}

void LibraryXml::plain(Key key, const QByteArray &value) {
  keyLine(key);
  buffer += "<string>";
  buffer += value;
  buffer += "</string>";
  lineEnd();
}

void LibraryXml::date(Key key, Date value) {
  keyLine(key);
  buffer += "<date>";
  buffer += value.toIsoText().toLatin1();
  buffer += "</date>";
  lineEnd();
}

void LibraryXml::boolean(Key key, bool value) {
  keyLine(key);
  buffer += value ? "<true/>" : "<false/>";
  lineEnd();
}

void LibraryXml::data(Key key, const QByteArray &value) {
  keyLine(key);
  buffer += "\n";
  indent();
  buffer += "<data>\n";
  const QByteArray encoded = value.toBase64();
  for (qsizetype at = 0; at < encoded.size(); at += 60) {
    indent();
    buffer += encoded.mid(at, 60);
    buffer += '\n';
  }
  indent();
  buffer += "</data>";
  lineEnd();
}

void LibraryXml::beginDictionary(Key key) {
  if (!key.isAbsent()) {
    keyLine(key);
    buffer += '\n';
  }
  openDictionary();
}

void LibraryXml::beginNumberedDictionary(int number) {
  keyLine(QByteArray::number(number));
  buffer += '\n';
  openDictionary();
}

void LibraryXml::openDictionary() {
  indent();
  buffer += "<dict>";
  lineEnd();
  open.push_back(Container::Dictionary);
}

void LibraryXml::beginArray(Key key) {
  keyLine(key);
  buffer += '\n';
  indent();
  buffer += "<array>";
  lineEnd();
  open.push_back(Container::Array);
}

void LibraryXml::end() {
  const Container closed = open.back();
  open.pop_back();
  indent();
  buffer += closed == Container::Array ? "</array>" : "</dict>";
  lineEnd();
}

void LibraryXml::keyLine(const QByteArray &key) {
  indent();
  buffer += "<key>";
  buffer += key;
  buffer += "</key>";
}

void LibraryXml::appendEscaped(const QString &value) {
  const QByteArray bytes = value.toUtf8();
  for (char c : bytes) {
    if (c == '&') {
      buffer += "&#38;";
    } else if (c == '<') {
      buffer += "&#60;";
    } else if (c == '>') {
      buffer += "&#62;";
    } else {
      buffer += c;
    }
  }
}

void LibraryXml::lineEnd() {
  buffer += '\n';
  if (buffer.size() < 1000000) return;
  failed = failed || file.write(buffer) != buffer.size();
  buffer.resize(0);
}

QByteArray persistentID(quint64 number) {
  return QByteArray::number(number, 16).toUpper().rightJustified(16, '0');
}

QString fileAddress(const QString &path) {
  return QStringLiteral("file://localhost") +
         QString::fromLatin1(QUrl::toPercentEncoding(path, "/!$&'()*+,:=@~"));
}
