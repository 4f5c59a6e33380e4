# zkr_bitmaps(LIST OUTPUT): generates the source file that embeds a list of bitmaps: for Windows a
# resource script of PNG resources by number, elsewhere an assembler file with their bytes and a
# table of them. Also generates BitmapNumbers.h, a name for each number: k28kButton is that of
# 10010-28k-button.png.
function(zkr_bitmaps list output)
  get_filename_component(folder ${list} DIRECTORY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
  file(STRINGS ${list} lines REGEX "^[0-9]")
  set(bytes "")
  set(table "")
  set(files "")
  set(names "")
  foreach(line ${lines})
    separate_arguments(fields UNIX_COMMAND "${line}")
    list(GET fields 0 number)
    list(GET fields 1 file)
    list(APPEND files ${folder}/${file})
    get_filename_component(stem ${file} NAME_WE)
    string(REPLACE "-" ";" words ${stem})
    list(POP_FRONT words)
    set(name k)
    foreach(word ${words})
      string(SUBSTRING ${word} 0 1 initial)
      string(TOUPPER ${initial} initial)
      string(SUBSTRING ${word} 1 -1 rest)
      string(APPEND name ${initial}${rest})
    endforeach()
    string(APPEND names "    ${name} = ${number},\n")
    if(WIN32)
      # A script is compiled anew only if its own text changes, so that it holds the file's hash.
      set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${folder}/${file})
      file(SHA256 ${folder}/${file} hash)
      string(APPEND bytes "// ${hash}\n${number} PNG \"${folder}/${file}\"\n")
    else()
      string(APPEND bytes "bitmap${number}: .incbin \"${folder}/${file}\"\nend${number}:\n")
      # struct EmbeddedBitmap: number, padding, address, length.
      string(APPEND table
             ".long ${number}, 0\n.quad bitmap${number}, end${number} - bitmap${number}\n")
    endif()
  endforeach()
  if(NOT WIN32)
    string(PREPEND bytes ".section .rodata\n")
    string(APPEND bytes ".section .data.rel.ro, \"aw\"\n.balign 8\n"
           ".globl zkrEditorBitmaps, zkrEditorBitmapsEnd\n"
           ".hidden zkrEditorBitmaps, zkrEditorBitmapsEnd\n"
           "zkrEditorBitmaps:\n${table}zkrEditorBitmapsEnd:\n"
           ".section .note.GNU-stack, \"\", @progbits\n")
  endif()
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/product/BitmapNumbers.h @ONLY CONTENT
"// The editor's bitmaps by name; generated from their list.
#pragma once

namespace bitmaps {

enum Number : int {
${names}};

}  // namespace bitmaps
")
  file(CONFIGURE OUTPUT ${output} CONTENT "${bytes}" @ONLY)
  if(NOT WIN32)
    set_source_files_properties(${output} PROPERTIES OBJECT_DEPENDS "${files}")
  endif()
endfunction()
