# Writes a source file that holds the files of the live page:
# cmake -DFOLDER=... "-DFILES=page.html;page.css" -DOUTPUT=... -P embed.cmake
set(arrays "")
set(choices "")
foreach(file IN LISTS FILES)
  string(MAKE_C_IDENTIFIER "${file}" name)
  file(READ "${FOLDER}/${file}" bytes HEX)
  string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
  string(APPEND arrays "constexpr unsigned char k_${name}[] = {${bytes}0};\n")
  string(APPEND choices "  if (name == \"${file}\") return textOf(k_${name}, sizeof k_${name});\n")
endforeach()
file(WRITE "${OUTPUT}" "#include \"controller/web/web_files.h\"

#include <cstddef>

namespace lamp::controller {
namespace {

${arrays}
// The arrays end with a zero that is no part of the file.
std::string_view textOf(const void* bytes, std::size_t size) {
  return {static_cast<const char*>(bytes), size - 1};
}

}  // namespace

std::string_view webFile(std::string_view name) {
${choices}  return {};
}

}  // namespace lamp::controller
")
