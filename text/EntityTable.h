#pragma once

#include <array>
#include <string_view>

/// A named character entity: what stands between "&" and ";", and its code point.
struct EntityRow {
  std::u16string_view name;
  char32_t code;
};

/// All named entities that are known; names are case-sensitive.
extern const std::array<EntityRow, 259> kEntityTable;
