# Makes a text file part of a program.
#
#   include(cmake/EmbedText.cmake)
#   embed_text(TARGET SYMBOL FILE)
#
# adds a generated source to TARGET that defines `extern const char* const SYMBOL` in namespace kova, with the
# bytes of FILE (UTF-8, a byte order mark left out). The source is made again when FILE changes.

if(NOT CMAKE_SCRIPT_MODE_FILE)
  set(EMBED_TEXT_SCRIPT "${CMAKE_CURRENT_LIST_FILE}")
  function(embed_text target symbol file)
    get_filename_component(input "${file}" ABSOLUTE)
    set(output "${CMAKE_CURRENT_BINARY_DIR}/embedded/${symbol}.cpp")
    add_custom_command(
      OUTPUT "${output}"
      COMMAND "${CMAKE_COMMAND}" "-DINPUT=${input}" "-DOUTPUT=${output}" "-DSYMBOL=${symbol}" -P
              "${EMBED_TEXT_SCRIPT}"
      DEPENDS "${input}" "${EMBED_TEXT_SCRIPT}"
      VERBATIM)
    target_sources(${target} PRIVATE "${output}")
    set_source_files_properties("${output}" PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  endfunction()
  return()
endif()

file(READ "${INPUT}" text)
string(ASCII 239 187 191 mark)
string(FIND "${text}" "${mark}" at)
if(at EQUAL 0)
  string(SUBSTRING "${text}" 3 -1 text)
endif()

# Compilers limit one literal to 16 KB; a piece ends with a line, so that no character is cut in two.
set(literals "")
string(LENGTH "${text}" left)
while(left GREATER 0)
  string(SUBSTRING "${text}" 0 15000 piece)
  if(left GREATER 15000)
    string(FIND "${piece}" "\n" lastBreak REVERSE)
    if(lastBreak LESS 0)
      message(FATAL_ERROR "${INPUT} has a line that is too long to embed")
    endif()
    math(EXPR length "${lastBreak} + 1")
    string(SUBSTRING "${piece}" 0 ${length} piece)
  endif()
  string(LENGTH "${piece}" length)
  string(SUBSTRING "${text}" ${length} -1 text)
  math(EXPR left "${left} - ${length}")
  string(APPEND literals "\n    R\"text(${piece})text\"")
endwhile()
if(literals STREQUAL "")
  set(literals " \"\"")
endif()
file(WRITE "${OUTPUT}" "namespace kova {
extern const char* const ${SYMBOL};
const char* const ${SYMBOL} =${literals};
} // namespace kova
")
