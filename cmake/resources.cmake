# Resources of a program from an .rc file, one source for all systems.
#
#   wq_resources(TARGET FILE.rc)
#
# On Windows the file is compiled as it is. Elsewhere a build step makes a table of it that the program adds to the layer
# when it starts. It understands these lines, and lines that are blank or begin with // or #:
#
#   NUMBER BITMAP "FILE.bmp"
#   STRINGTABLE BEGIN
#     NUMBER "text"
#   END
#
# Texts are in code page 932. File names are relative to the .rc file. In a text, \\ stands for a backslash, which the
# second byte of a character can be too, \n \r \t for control characters, and "" for a quote.

if(NOT CMAKE_SCRIPT_MODE_FILE)
  set(wq_resources_script ${CMAKE_CURRENT_LIST_FILE} CACHE INTERNAL "")

  function(wq_resources target file)
    get_filename_component(file ${file} ABSOLUTE)
    get_filename_component(folder ${file} DIRECTORY)
    if(WIN32)
      target_sources(${target} PRIVATE ${file})
      set_source_files_properties(${file} PROPERTIES COMPILE_OPTIONS "-c;932;-I;${folder}")
      return()
    endif()
    get_filename_component(name ${file} NAME)
    set(made ${CMAKE_CURRENT_BINARY_DIR}/${target}_${name}.cpp)
    file(GLOB bitmaps CONFIGURE_DEPENDS ${folder}/*.bmp)
    add_custom_command(
      OUTPUT ${made}
      COMMAND ${CMAKE_COMMAND} -D "source=${file}" -D "made=${made}" -P ${wq_resources_script}
      DEPENDS ${file} ${bitmaps} ${wq_resources_script}
      COMMENT "Making a table of ${name}")
    target_sources(${target} PRIVATE ${made})
  endfunction()
  return()
endif()

# The build step. Everything is done on pairs of hexadecimal digits with a blank behind each, since CMake's own strings
# give bytes of other code pages, brackets and semicolons a meaning.
cmake_policy(VERSION 3.25)

set(blanks "((20|09) )*")
set(number "((3[0-9] )+)")
set(quoted "22 (([013-9a-f][0-9a-f] |2[013-9a-f] |22 22 )*)22 ")

# The text that pairs of digits stand for; they are plain ASCII.
function(text_of pairs result)
  string(REGEX MATCHALL "[0-9a-f][0-9a-f]" pairs "${pairs}")
  set(text "")
  foreach(pair IN LISTS pairs)
    math(EXPR code "0x${pair}")
    string(ASCII ${code} character)
    string(APPEND text "${character}")
  endforeach()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

# Adds an array of bytes and its entry to the table.
function(add kind id pairs)
  string(REGEX REPLACE "(..) " "0x\\1, " bytes "${pairs}")
  set(name "resource${kind}_${id}")
  string(REGEX REPLACE "[^ ]" "" count "${pairs}")
  string(LENGTH "${count}" size)
  set(arrays "${arrays}const unsigned char ${name}[] = {${bytes}0};\n" PARENT_SCOPE)
  set(entries "${entries}    {${kind}, ${id}, ${name}, ${size}},\n" PARENT_SCOPE)
endfunction()

function(read_pairs file result)
  file(READ "${file}" digits HEX)
  string(REGEX REPLACE "(..)" "\\1 " pairs "${digits}")
  set(${result} "${pairs}" PARENT_SCOPE)
endfunction()

get_filename_component(folder "${source}" DIRECTORY)
read_pairs("${source}" pairs)
string(REGEX REPLACE "0a " "0a ;" lines "${pairs}")
set(in_table FALSE)
set(arrays "")
set(entries "")
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^((20|09) )+" "" line "${line}")
  string(REGEX REPLACE "((20|09|0d|0a) )+$" "" line "${line}")
  if(line STREQUAL "" OR line MATCHES "^(2f 2f|23) ")
  elseif(line MATCHES "^${number}${blanks}42 49 54 4d 41 50 ${blanks}${quoted}$") # BITMAP
    set(name_pairs "${CMAKE_MATCH_7}")
    text_of("${CMAKE_MATCH_1}" id)
    text_of("${name_pairs}" name)
    read_pairs("${folder}/${name}" bitmap)
    string(SUBSTRING "${bitmap}" 42 -1 bitmap) # without the file header of 14 bytes
    add(2 ${id} "${bitmap}")
  elseif(line MATCHES "^53 54 52 49 4e 47 54 41 42 4c 45 (${blanks}(42 45 47 49 4e|7b) )?$") # STRINGTABLE BEGIN
    set(in_table TRUE)
  elseif(in_table AND line MATCHES "^(42 45 47 49 4e|7b) $") # BEGIN on a line of its own
  elseif(in_table AND line MATCHES "^(45 4e 44|7d) $") # END
    set(in_table FALSE)
  elseif(in_table AND line MATCHES "^${number}(2c )?${blanks}${quoted}$")
    set(string "${CMAKE_MATCH_6}")
    text_of("${CMAKE_MATCH_1}" id)
    string(REPLACE "22 22 " "22 " string "${string}")
    string(REGEX REPLACE "5c 5c " "<>" string "${string}")
    string(REPLACE "5c 6e " "0a " string "${string}")
    string(REPLACE "5c 72 " "0d " string "${string}")
    string(REPLACE "5c 74 " "09 " string "${string}")
    string(REPLACE "<>" "5c " string "${string}")
    add(6 ${id} "${string}")
  else()
    text_of("${line}" text)
    message(FATAL_ERROR "${source}: a line that is none of a bitmap or a table of strings: ${text}")
  endif()
endforeach()

get_filename_component(name "${source}" NAME)
file(
  WRITE "${made}"
  "// Made from ${name}.\n#include \"platform/resources.h\"\n\nnamespace {\n\n${arrays}\n"
  "const PlatformResource resources[] = {\n${entries}};\n\n"
  "const struct Added {\n  Added() { platformAddResources(resources, sizeof resources / sizeof *resources); }\n} added;\n\n"
  "} // namespace\n")
