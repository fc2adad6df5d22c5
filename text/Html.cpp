#include "text/Html.h"

#include "text/AmpersandCodes.h"
#include "text/Enclosed.h"
#include "text/Search.h"

QString stringFlowedFromHTML(const QString &html) {
  static const struct {
    QString wanted, replacement;
    SearchOption option = SearchOption::Literal;
  } kSteps[] = {
      {QStringLiteral("\t"), QStringLiteral(" ")},
      {QStringLiteral("\r"), QStringLiteral(" ")},
      {QStringLiteral("\n"), QStringLiteral(" ")},
      {QStringLiteral("  "), QStringLiteral(" ")},
      {QStringLiteral("<br>"), QStringLiteral("\n"), SearchOption::CaseInsensitive},
      {QStringLiteral("<br/>"), QStringLiteral("\n"), SearchOption::CaseInsensitive},
      {QStringLiteral("<br />"), QStringLiteral("\n"), SearchOption::CaseInsensitive},
      {QStringLiteral("<p>"), QStringLiteral("\n\n"), SearchOption::CaseInsensitive},
      {QStringLiteral("</p>"), QStringLiteral("\n\n"), SearchOption::CaseInsensitive},
      {QStringLiteral("\n \n"), QStringLiteral("\n\n")},
      {QStringLiteral("\n\n\n"), QStringLiteral("\n\n")},
  };
  QString text = html;
  for (const auto &[wanted, replacement, option] : kSteps) {
    // Again until a pass finds nothing, so that a run collapses wholly.
    for (QString before; before != text;) {
      before = text;
      text = stringByReplacingOccurrencesOfStringWithStringOptions(text, wanted, replacement, option);
    }
  }
  text = stringWithStrippedEnclosedByCharToChar(text, u'<', u'>').trimmed();
  return stringByReplacingAmpersandCodes(text);
}
