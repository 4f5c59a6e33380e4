# zkr_bitmaps(LIST OUTPUT): generates the source file that embeds a list of bitmaps: for Windows a
# resource script of PNG resources by number, elsewhere an assembler file with their bytes and a
# table of them.
function(zkr_bitmaps list output)
  get_filename_component(folder ${list} DIRECTORY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
  file(STRINGS ${list} lines REGEX "^[0-9]")
  set(bytes "")
  set(table "")
  set(files "")
  foreach(line ${lines})
    separate_arguments(fields UNIX_COMMAND "${line}")
    list(GET fields 0 number)
    list(GET fields 1 file)
    list(APPEND files ${folder}/${file})
    if(WIN32)
      string(APPEND bytes "${number} PNG \"${folder}/${file}\"\n")
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
  file(CONFIGURE OUTPUT ${output} CONTENT "${bytes}" @ONLY)
  set_source_files_properties(${output} PROPERTIES OBJECT_DEPENDS "${files}")
endfunction()
