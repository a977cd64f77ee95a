# What every target of the project is compiled with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(lamp_options INTERFACE)
target_include_directories(lamp_options INTERFACE "${CMAKE_SOURCE_DIR}")
target_compile_options(lamp_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Werror -fstack-protector-strong)
# GCC 12 sees overlaps in std::string's operator+ that are not there when it optimises.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(lamp_options INTERFACE -Wno-restrict)
endif()
if(NOT LAMP_FUZZ)
  target_link_options(lamp_options INTERFACE -Wl,--no-undefined)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT LAMP_SANITIZE)
  # Debian's compilers predefine level 2 in some configurations; level 3 replaces it.
  target_compile_options(lamp_options INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
  include(CheckCXXCompilerFlag)
  check_cxx_compiler_flag(-fcf-protection=full LAMP_CONTROL_FLOW_PROTECTION)
  if(LAMP_CONTROL_FLOW_PROTECTION)
    target_compile_options(lamp_options INTERFACE -fcf-protection=full)
  endif()
endif()
target_link_options(lamp_options INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)

# Fuzz targets are short programs that run often: optimised a little, and without what a debugger
# wants. Every edge of the project's own code is counted.
if(LAMP_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "The fuzz targets need clang, which brings libFuzzer; use ./fuzz.sh")
  endif()
  target_compile_options(lamp_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(LAMP_SANITIZE STREQUAL "thread")
  target_compile_options(lamp_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(lamp_options INTERFACE -fsanitize=thread)
elseif(LAMP_SANITIZE)
  target_compile_options(lamp_options INTERFACE -fsanitize=address,undefined
    -fno-sanitize-recover=all -fno-omit-frame-pointer $<$<NOT:$<BOOL:${LAMP_FUZZ}>>:-g1>)
  target_link_options(lamp_options INTERFACE -fsanitize=address,undefined)
endif()

# A program finds its libraries beside itself and then where the system keeps them, in front of what
# LD_LIBRARY_PATH says: an empty or a relative part of that would bring in code from whatever folder
# the program is started in. Only the older kind of library path stands in front of the variable. The
# folder of the programs can be moved as a whole, and names no path of the machine.
function(lamp_program target)
  set(path "$ORIGIN/../lib")
  if(CMAKE_LIBRARY_ARCHITECTURE)
    list(APPEND path "/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}" "/lib/${CMAKE_LIBRARY_ARCHITECTURE}")
  endif()
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "${path}" BUILD_WITH_INSTALL_RPATH ON)
  target_link_options(${target} PRIVATE -Wl,--disable-new-dtags)
endfunction()

# lamp_precompile(TARGET [HEADER...]) parses headers that the target's sources include anyway once.
# Without a header of its own a target shares the standard library's with all others; with FROM OTHER
# it takes those of a target that is compiled with the same options (-fPIE or -fPIC among them) and
# whose definitions it has too. LAMP_PRECOMPILE=OFF compiles every source on its own, which shows a
# header that a source forgot to include.
option(LAMP_PRECOMPILE "Precompile the headers that most sources include" ON)
set(LAMP_STANDARD_HEADERS <algorithm> <array> <chrono> <filesystem> <functional> <map> <memory>
  <optional> <string> <string_view> <unordered_map> <utility> <vector>)
function(lamp_precompile target)
  if(NOT LAMP_PRECOMPILE)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 shared "" "FROM" "")
  if(shared_FROM)
    target_precompile_headers(${target} REUSE_FROM ${shared_FROM})
  elseif(ARGN)
    target_precompile_headers(${target} PRIVATE ${LAMP_STANDARD_HEADERS} ${ARGN})
  else()
    target_precompile_headers(${target} REUSE_FROM lamp_standard_headers)
  endif()
  # ccache keeps objects of precompiled headers only with this.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE -fpch-preprocess)
  else()
    target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
  endif()
endfunction()
if(LAMP_PRECOMPILE)
  add_library(lamp_standard_headers OBJECT "${CMAKE_CURRENT_LIST_DIR}/standard_headers.cpp")
  target_link_libraries(lamp_standard_headers PRIVATE lamp_options)
  lamp_precompile(lamp_standard_headers <string>)
endif()
