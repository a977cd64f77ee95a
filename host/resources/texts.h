#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "host/export.h"
#include "host/resources/text_id.h"
#include "host/text/basic_string.h"

namespace host {

/// Loads the texts of a language from "<folder>/<language>.xml" and puts them in force. The pseudo
/// language "numbers" makes every text its own number in brackets, with the placeholders of the
/// English text behind it: "[38265](%s,%d,%d)". False with a text in @p cause when the catalogue is
/// missing or broken; the texts before stay in force.
HOST_API bool loadTexts(const std::filesystem::path& folder, std::string_view language,
                        std::string& cause);

}  // namespace host

/// The text with a number in the language in force, "[number]" when there is none.
HOST_API XCBasicString XCLoadString(host::TextId id);
HOST_API XCBasicString XCLoadString(int id);
