#pragma once

#include <QString>

/// The plain text of simple HTML: white space runs as one blank, "<br>" as a line break, "<p>" and "</p>" as
/// an empty line and never more than one; other tags go, character entities are decoded, and white space goes
/// from both ends. Any thread.
QString stringFlowedFromHTML(const QString &html);
