#include "desktop/ToolTips.h"

namespace toolTips {

QString fromPlainText(const QString &text) {
  if (text.isEmpty()) return {};
  return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text.toHtmlEscaped());
}

}  // namespace toolTips
