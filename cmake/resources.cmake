# Resources of a program from an .rc file, one source for all systems.
#
#   wq_resources(TARGET FILE.rc)
#
# On Windows the file is compiled as it is. Elsewhere a build step makes a table of it that the program adds to the layer
# when it starts. It understands these lines, and lines that are blank or begin with // or #:
#
#   #include "FILE.h"        only for the numbers that the file defines names as; one that isn't there is left out
#   #define NAME NUMBER
#   ID BITMAP "FILE.bmp"
#   ID ICON "FILE.ico"
#   ID CURSOR "FILE.cur"
#   STRINGTABLE BEGIN
#     ID "text"
#   END
#
# An ID is a number or a name that was defined. File names are relative to the .rc file and may stand without quotes.
# DISCARDABLE, which means nothing any more, may stand behind the kind. Texts are in code page 932; \\ stands for a
# backslash, which the second byte of a character can be too, \n \r \t for control characters, and "" for a quote.

cmake_policy(VERSION 3.25)

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
    add_custom_command(
      OUTPUT ${made}
      COMMAND ${CMAKE_COMMAND} -D "source=${file}" -D "made=${made}" -P ${wq_resources_script}
      DEPENDS ${file} ${wq_resources_script}
      DEPFILE ${made}.d # the files that it names
      COMMENT "Making a table of ${name}")
    target_sources(${target} PRIVATE ${made})
  endfunction()
  return()
endif()

# The build step. Everything is done on pairs of hexadecimal digits with a blank behind each, since CMake's own strings
# give bytes of other code pages, brackets and semicolons a meaning.

set(blanks "(20 |09 )*")
set(space "(20 |09 )+")
set(word "(([13-9a-f][0-9a-f] |0[0-8a-f] |2[13-9abd-f] )+)") # without blanks, quotes and commas
set(quoted "22 (([013-9a-f][0-9a-f] |2[013-9a-f] |22 22 )*)22 ")

# The pairs of a text.
function(pairs_of text result)
  string(HEX "${text}" digits)
  string(REGEX REPLACE "(..)" "\\1 " pairs "${digits}")
  set(${result} "${pairs}" PARENT_SCOPE)
endfunction()

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

# The number that a word is, or that it was defined as.
function(number_of pairs result)
  text_of("${pairs}" text)
  if(DEFINED number_${text})
    set(text ${number_${text}})
  endif()
  if(NOT text MATCHES "^([0-9]+|0[xX][0-9a-fA-F]+)$")
    message(FATAL_ERROR "${source}: neither a number nor defined as one: ${text}")
  endif()
  math(EXPR number "${text}")
  set(${result} ${number} PARENT_SCOPE)
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
  string(REPLACE " " "\\ " escaped "${file}")
  set(files "${files} ${escaped}" PARENT_SCOPE)
endfunction()

# The lines of a file, without blanks round them.
function(read_lines file result)
  read_pairs("${file}" pairs)
  string(REGEX REPLACE "0a " "0a ;" lines "${pairs}")
  list(TRANSFORM lines REPLACE "^((20|09) )+" "")
  list(TRANSFORM lines REPLACE "((20|09|0d|0a) )+$" "")
  set(${result} "${lines}" PARENT_SCOPE)
  set(files "${files}" PARENT_SCOPE)
endfunction()

# Takes a name's number from a line.
function(read_definition line)
  if(line MATCHES "^23 ${blanks}${define}${space}${word}${space}${word}")
    text_of("${CMAKE_MATCH_3}" name)
    text_of("${CMAKE_MATCH_6}" number)
    if(number MATCHES "^([0-9]+|0[xX][0-9a-fA-F]+)$")
      set(number_${name} ${number} PARENT_SCOPE)
    endif()
  endif()
endfunction()

# The file that the rest of a line names.
function(file_of pairs result)
  string(REGEX REPLACE "^${discardable}${space}" "" pairs "${pairs}")
  if(NOT pairs MATCHES "^(${quoted}|${word})$")
    text_of("${pairs}" text)
    message(FATAL_ERROR "${source}: not the name of a file: ${text}")
  endif()
  string(REPLACE "22 " "" pairs "${pairs}")
  text_of("${pairs}" name)
  string(REPLACE "\\" "/" name "${name}")
  set(${result} "${folder}/${name}" PARENT_SCOPE)
endfunction()

foreach(name bitmap icon cursor discardable stringtable begin end)
  string(TOUPPER ${name} keyword)
  pairs_of(${keyword} ${name})
endforeach()
pairs_of("include" include)
pairs_of("define" define)
set(kind_BITMAP 2)
set(kind_ICON 14)
set(kind_CURSOR 12)

get_filename_component(folder "${source}" DIRECTORY)
set(files "")
set(arrays "")
set(entries "")
set(in_table FALSE)
read_lines("${source}" lines)
foreach(line IN LISTS lines)
  if(line STREQUAL "" OR line MATCHES "^2f 2f ")
  elseif(line MATCHES "^23 ${blanks}${include}${blanks}${quoted}$")
    text_of("${CMAKE_MATCH_3}" header)
    if(EXISTS "${folder}/${header}")
      read_lines("${folder}/${header}" header_lines)
      foreach(header_line IN LISTS header_lines)
        read_definition("${header_line}")
      endforeach()
    endif()
  elseif(line MATCHES "^23 ")
    read_definition("${line}")
  elseif(line MATCHES "^${stringtable}${blanks}(${discardable})?${blanks}(${begin}|7b )?$")
    set(in_table TRUE)
  elseif(in_table AND line MATCHES "^(${begin}|7b )$")
  elseif(in_table AND line MATCHES "^(${end}|7d )$")
    set(in_table FALSE)
  elseif(in_table AND line MATCHES "^${word}${blanks}(2c )?${blanks}${quoted}$")
    set(string "${CMAKE_MATCH_6}")
    number_of("${CMAKE_MATCH_1}" id)
    string(REPLACE "22 22 " "22 " string "${string}")
    string(REGEX REPLACE "5c 5c " "<>" string "${string}")
    string(REPLACE "5c 6e " "0a " string "${string}")
    string(REPLACE "5c 72 " "0d " string "${string}")
    string(REPLACE "5c 74 " "09 " string "${string}")
    string(REPLACE "<>" "5c " string "${string}")
    add(6 ${id} "${string}")
  elseif(line MATCHES "^${word}${space}(${bitmap}|${icon}|${cursor})${blanks}(.*)$")
    set(rest "${CMAKE_MATCH_6}")
    text_of("${CMAKE_MATCH_4}" kind)
    number_of("${CMAKE_MATCH_1}" id)
    file_of("${rest}" file)
    read_pairs("${file}" bytes)
    if(kind STREQUAL "BITMAP")
      string(SUBSTRING "${bytes}" 42 -1 bytes) # without the file header of 14 bytes
    endif()
    add(${kind_${kind}} ${id} "${bytes}")
  else()
    text_of("${line}" text)
    message(FATAL_ERROR "${source}: a line that is no resource of a known kind: ${text}")
  endif()
endforeach()

get_filename_component(name "${source}" NAME)
file(
  WRITE "${made}"
  "// Made from ${name}.\n#include \"platform/resources.h\"\n\nnamespace {\n\n${arrays}\n"
  "const PlatformResource resources[] = {\n${entries}};\n\n"
  "const struct Added {\n  Added() { platformAddResources(resources, sizeof resources / sizeof *resources); }\n} added;\n\n"
  "} // namespace\n")
string(REPLACE " " "\\ " target "${made}")
file(WRITE "${made}.d" "${target}:${files}\n")
