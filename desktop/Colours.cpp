#include "desktop/Colours.h"

namespace colours {

QColor blend(const QColor &bottom, const QColor &top, double amount) {
  const auto mix = [amount](float a, float b) { return float(a + (b - a) * amount); };
  return QColor::fromRgbF(mix(bottom.redF(), top.redF()), mix(bottom.greenF(), top.greenF()),
                          mix(bottom.blueF(), top.blueF()));
}

QColor stripe(const QPalette &palette) {
  return blend(palette.color(QPalette::Base), palette.color(QPalette::Highlight), 0.13);
}

QColor secondaryText(const QPalette &palette) {
  return blend(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.32);
}

QColor note(const QPalette &palette) {
  return blend(palette.color(QPalette::Window), QColor(240, 180, 20), 0.22);
}

QColor noteFrame(const QPalette &palette) {
  return blend(palette.color(QPalette::Window), QColor(240, 180, 20), 0.6);
}

QColor separator(const QPalette &palette) {
  return blend(palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.2);
}

QPalette withSecondaryText(const QPalette &palette) {
  QPalette changed = palette;
  changed.setColor(QPalette::Active, QPalette::WindowText, secondaryText(palette));
  changed.setColor(QPalette::Inactive, QPalette::WindowText, secondaryText(palette));
  return changed;
}

}  // namespace colours
