# CPack's settings for all packages; Generators.cmake has those that differ.
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_SOURCE_DIR}/Generators.cmake)
set(CPACK_GENERATOR NSIS ZIP TGZ DEB)
set(CPACK_MONOLITHIC_INSTALL ON)
set(CPACK_PACKAGE_NAME ZKRT46)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR ${ZKR_MAKER})
set(CPACK_PACKAGE_CONTACT "${ZKR_MAKER} <${ZKR_MAIL_ADDRESS}>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://${ZKR_WEB_ADDRESS})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "stereo mastering equaliser plug-in, and its command-line tool")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_NAME zkr-t46)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "gnuplot-nox | gnuplot, xdg-utils, zenity | kdialog")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
file(READ debian/description CPACK_DEBIAN_PACKAGE_DESCRIPTION)
string(STRIP "${CPACK_DEBIAN_PACKAGE_DESCRIPTION}" CPACK_DEBIAN_PACKAGE_DESCRIPTION)

# Dependencies are determined here, since CPack's own method would also register the plug-ins below
# /usr/lib with the dynamic linker.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/debian/control
     "Source: zkr-t46\n\nPackage: zkr-t46\nArchitecture: amd64\n")
set(linux ${ZKR_PRODUCTS}/linux)
execute_process(
  COMMAND dpkg-shlibdeps -O ${linux}/zkrt46 ${linux}/ZKRT46.so
          ${linux}/ZKRT46.vst3/Contents/x86_64-linux/ZKRT46.so
  WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
  RESULT_VARIABLE failed OUTPUT_VARIABLE needed ERROR_VARIABLE said
  OUTPUT_STRIP_TRAILING_WHITESPACE)
if(failed)
  message(FATAL_ERROR "${said}")
endif()
string(REGEX REPLACE "^shlibs:Depends=" "" CPACK_DEBIAN_PACKAGE_DEPENDS "${needed}")

# Lists every file of the bundle for the installer, so that it removes only those.
set(installed "")
set(files "")
set(folders "")
set(whole ${ZKR_PRODUCTS}/windows)
file(GLOB_RECURSE entries RELATIVE ${whole} LIST_DIRECTORIES ON ${whole}/ZKRT46.vst3/*)
list(SORT entries ORDER DESCENDING)  # a folder comes after its contents
list(APPEND entries ZKRT46.vst3)
foreach(entry ${entries})
  string(REPLACE "/" "\\" path ${entry})
  if(IS_DIRECTORY ${whole}/${entry})
    string(APPEND folders "  RMDir \"\${Place}\\${path}\"\n")
  else()
    get_filename_component(folder ${entry} DIRECTORY)
    string(REPLACE "/" "\\" folder ${folder})
    string(APPEND installed "  SetOutPath \"$Vst3Folder\\${folder}\"\n"
           "  File \"\${TREE}/${entry}\"\n")
    string(APPEND files
           "  !insertmacro CallWith \${Function} \"\${Place}\\${path}\"\n")
  endif()
endforeach()
# And every preset.
set(installed_presets "  SetOutPath \"\${PRESETS}\"\n")
set(preset_files "")
file(GLOB entries RELATIVE "${presets}/${preset_folder}" "${presets}/${preset_folder}/*")
foreach(entry ${entries})
  string(APPEND installed_presets "  File \"\${TREE}/VST3 Presets/${preset_folder}/${entry}\"\n")
  string(APPEND preset_files "  !insertmacro CallWith \${Function} \"\${PRESETS}\\${entry}\"\n")
endforeach()
set(CPACK_ZKR_BUNDLE_SCRIPT ${CMAKE_CURRENT_BINARY_DIR}/bundle.nsh)
file(WRITE ${CPACK_ZKR_BUNDLE_SCRIPT}
     "!macro InstallBundle\n${installed}!macroend\n"
     "!macro ForEachBundleFile Function Place\n${files}!macroend\n"
     "!macro RemoveBundleFolders Place\n${folders}!macroend\n"
     "!macro InstallPresets\n${installed_presets}!macroend\n"
     "!macro ForEachPreset Function\n${preset_files}!macroend\n")
set(CPACK_ZKR_INSTALLER_SCRIPT ${CMAKE_CURRENT_SOURCE_DIR}/installer.nsi)
set(CPACK_ZKR_RESOURCES ${top}/resources)
set(CPACK_ZKR_COPYRIGHT ${ZKR_COPYRIGHT})
set(CPACK_ZKR_SETTINGS_FOLDER ${ZKR_SETTINGS_FOLDER})

include(CPack)
