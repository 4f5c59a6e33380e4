# The texts that come with the products: licences, copyrights, READMEs, changelog, descriptions for
# software centres, manual page, and completion for shells.

# paragraph(FILE LINE RESULT): the first paragraph of a file that begins with this line.
function(paragraph file line result)
  execute_process(
    COMMAND awk -v RS= -F "\n" "$1 == \"${line}\" { print; exit }" ${file}
    OUTPUT_VARIABLE text OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(text STREQUAL "")
    message(FATAL_ERROR "${file} has no paragraph under \"${line}\".")
  endif()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

# Licence texts of linked libraries, from their Debian packages.
paragraph(/usr/share/doc/libcli11-dev/copyright "License: BSD-3-clause" bsd)
paragraph(/usr/share/doc/nlohmann-json3-dev/copyright "License: Expat" expat)
paragraph(/usr/share/doc/libxsimd-dev/copyright "License: BSL-1.0" bsl)
paragraph(/usr/share/doc/libxsimd-dev/copyright "License: SunPro" sunpro)
paragraph(/usr/share/doc/mingw-w64-common/copyright "Files: *" mingw)
string(REGEX REPLACE "^.*\nLicense: " "License: " zpl "${mingw}")

set(notices ${CMAKE_CURRENT_BINARY_DIR}/notices)
set(documents share/doc/zkr-t46)
set(metainfo example.zkr_soundworks.zkrt46.metainfo.xml)
configure_file(copyright-windows.in ${notices}/windows/COPYRIGHT.txt @ONLY NEWLINE_STYLE DOS)
configure_file(copyright-linux.in ${notices}/linux/copyright @ONLY)
configure_file(${top}/LICENSE ${notices}/windows/LICENSE.txt @ONLY NEWLINE_STYLE DOS)
configure_file(README-windows.txt.in ${notices}/windows/README.txt @ONLY NEWLINE_STYLE DOS)
configure_file(README-linux.txt.in ${notices}/linux/README.txt @ONLY)

string(TIMESTAMP day "%Y-%m-%d" UTC)  # from SOURCE_DATE_EPOCH, if set
file(MAKE_DIRECTORY ${notices}/debian)
execute_process(
  COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/debian/changelog.py ${top}/CHANGELOG.md zkr-t46
          "${ZKR_MAKER} <${ZKR_MAIL_ADDRESS}>" ${day}
  OUTPUT_FILE ${notices}/debian/changelog COMMAND_ERROR_IS_FATAL ANY)
configure_file(metainfo.xml.in ${notices}/debian/${metainfo} @ONLY)
configure_file(debian/doc-base.in ${notices}/debian/zkr-t46.zkr-t46-manual @ONLY)

# generate(FILE OPTION...): a file that the tool prints.
function(generate file)
  execute_process(COMMAND ${ZKR_PRODUCTS}/linux/zkrt46 ${ARGN} OUTPUT_FILE ${file}
    COMMAND_ERROR_IS_FATAL ANY)
endfunction()
generate(${notices}/linux/zkrt46.1 --manual-page ${day})
file(MAKE_DIRECTORY ${notices}/completions)
generate(${notices}/completions/zkrt46 --completion bash)
generate(${notices}/completions/_zkrt46 --completion zsh)
generate(${notices}/completions/zkrt46.fish --completion fish)

foreach(text debian/changelog linux/zkrt46.1)
  execute_process(COMMAND gzip -9 -n -c ${notices}/${text} OUTPUT_FILE ${notices}/${text}.gz
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# The setting ManualPath for the Debian package: the manual's installed path.
file(WRITE ${notices}/debian/ManualPath "/usr/${documents}/ZKRT46-manual.pdf")
