# kova_windows_resources(TARGET FILE_NAME DESCRIPTION [MANIFEST]): what Windows shows of a program or library, and the
# manifest that a program starts with. A library has none, for it must not change the process that loads it.
# The linker leaves the time out, so that the same sources give the same bytes.
function(kova_windows_resources target file_name description)
  set(kind VFT_DLL)
  set(manifest "")
  if(ARGN)
    set(kind VFT_APP)
    get_filename_component(manifest "${ARGN}" ABSOLUTE)
    set(manifest "1 RT_MANIFEST \"${manifest}\"")
  endif()
  set(version "${PROJECT_VERSION_MAJOR},${PROJECT_VERSION_MINOR},0,0")
  set(resources "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
  configure_file("${PROJECT_SOURCE_DIR}/resources/windows/version.rc.in" "${resources}" @ONLY)
  target_sources(${target} PRIVATE "${resources}")
  set_source_files_properties("${resources}" PROPERTIES OBJECT_DEPENDS "${ARGN}")
  if(MSVC)
    target_link_options(${target} PRIVATE /MANIFEST:NO) # no second one
  else()
    target_link_options(${target} PRIVATE "LINKER:--no-insert-timestamp")
  endif()
endfunction()
