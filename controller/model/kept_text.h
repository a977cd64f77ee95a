#pragma once

#include <pugixml.hpp>

namespace lamp::controller {

/// How documents are read that this program printed itself: every character comes back as it was,
/// line breaks and lonely blanks too.
inline constexpr unsigned kKeptText =
    (pugi::parse_default | pugi::parse_ws_pcdata_single) & ~pugi::parse_eol;

}  // namespace lamp::controller
