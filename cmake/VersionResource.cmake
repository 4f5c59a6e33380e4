# zkr_version_resource(TARGET DESCRIPTION FILE): adds a version resource (version, vendor, licence
# and icon, which Explorer and hosts show) to a Windows library or program. FILE is its name in the
# product. Does nothing on other systems.
function(zkr_version_resource target description file)
  if(NOT WIN32)
    return()
  endif()
  set(type VFT_DLL)
  get_target_property(kind ${target} TYPE)
  if(kind STREQUAL EXECUTABLE)
    set(type VFT_APP)
  endif()
  string(REPLACE "." "," numbers ${PROJECT_VERSION})
  set(icon ${CMAKE_SOURCE_DIR}/resources/icon.ico)
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}-version.rc)
  configure_file(${CMAKE_SOURCE_DIR}/packaging/product.rc.in ${script} @ONLY)
  target_sources(${target} PRIVATE ${script})
  set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS ${icon})
endfunction()
