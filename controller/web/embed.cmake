# Writes a source file that holds the live page: cmake -DFOLDER=... -DOUTPUT=... -P embed.cmake
set(text "#include \"controller/web/web_files.h\"\n\nnamespace lamp::controller {\n")
foreach(pair "webPage;page.html" "webScript;page.js" "webStyle;page.css")
  list(GET pair 0 function)
  list(GET pair 1 file)
  file(READ "${FOLDER}/${file}" bytes HEX)
  string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
  string(APPEND text "\nstd::string_view ${function}() {\n"
                     "  static constexpr unsigned char kBytes[] = {${bytes}0};\n"
                     "  const void* bytes = kBytes;\n"
                     "  return {static_cast<const char*>(bytes), sizeof kBytes - 1};\n}\n")
endforeach()
string(APPEND text "\n}  // namespace lamp::controller\n")
file(WRITE "${OUTPUT}" "${text}")
