#pragma once

#include <string_view>

// What the host calls the types of the plug-in's devices.

namespace lamp::type_name {

inline constexpr std::u16string_view Controller = u"ZELLAMPMANAGER";
inline constexpr std::u16string_view Lamp = u"ZELLAMP";

}  // namespace lamp::type_name
