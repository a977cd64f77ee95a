# lamp_add_suites(PROGRAM LABELS LABEL [TIMEOUT SECONDS] [ENVIRONMENT NAME=VALUE...] [SLOW SUITE...])
#
# A test of CTest for each suite of a test program: the tests of a suite share a process, which costs
# a fraction of a process each. TIMEOUT is for a suite. The suites behind SLOW get the label "slow"
# instead: ./test.sh --all alone runs them.
#
# The program gets the main() of this folder unless it has one of its own.
function(lamp_add_suites program)
  cmake_parse_arguments(PARSE_ARGV 1 suites "" "LABELS;TIMEOUT" "ENVIRONMENT;SLOW")
  if(NOT suites_TIMEOUT)
    set(suites_TIMEOUT 300)
  endif()
  set(properties LABELS "${suites_LABELS}" TIMEOUT "${suites_TIMEOUT}")
  if(suites_ENVIRONMENT)
    # One argument, whatever its number of variables.
    string(REPLACE ";" "$<SEMICOLON>" environment "${suites_ENVIRONMENT}")
    list(APPEND properties ENVIRONMENT "${environment}")
  endif()
  target_link_libraries(${program} PRIVATE lamp_test_main)
  list(JOIN suites_SLOW "," slow)
  set(tests "${CMAKE_CURRENT_BINARY_DIR}/${program}_suites.cmake")
  add_custom_command(TARGET ${program} POST_BUILD
    BYPRODUCTS "${tests}"
    COMMAND ${Python3_EXECUTABLE} "${CMAKE_SOURCE_DIR}/tests/main/list_suites.py"
            "$<TARGET_FILE:${program}>" "${tests}" "${slow}" ${properties}
    VERBATIM)
  # What is not built yet is a test that fails.
  set(include "${CMAKE_CURRENT_BINARY_DIR}/${program}_include.cmake")
  file(WRITE "${include}" "if(EXISTS \"${tests}\")\n  include(\"${tests}\")\n"
    "else()\n  add_test(${program}_NOT_BUILT ${program}_NOT_BUILT)\nendif()\n")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${include}")
endfunction()
