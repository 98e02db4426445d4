# What Windows looks for inside a program: icon, version and manifest. Does nothing elsewhere.
#
#   windows_resources(TARGET "What the program is")
set(DRAVIK_RESOURCES ${PROJECT_SOURCE_DIR}/packaging/windows)
set(DRAVIK_ICON ${PROJECT_BINARY_DIR}/resources/dravik.ico)

if(WIN32)
  enable_language(RC)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  set(icon_pictures 16 24 32 48 64 256)
  list(TRANSFORM icon_pictures REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/packaging/icons/dravik-\\1.png")
  add_custom_command(
    OUTPUT ${DRAVIK_ICON}
    COMMAND ${Python3_EXECUTABLE} -B ${DRAVIK_RESOURCES}/make-ico.py ${DRAVIK_ICON} ${icon_pictures}
    DEPENDS ${icon_pictures} ${DRAVIK_RESOURCES}/make-ico.py
    VERBATIM)
  add_custom_target(dravik_icon DEPENDS ${DRAVIK_ICON})
endif()

function(windows_resources target description)
  if(NOT WIN32)
    return()
  endif()
  set(resources ${PROJECT_BINARY_DIR}/resources/${target}.rc)
  configure_file(${DRAVIK_RESOURCES}/program.rc.in ${resources} @ONLY)
  target_sources(${target} PRIVATE ${resources})
  set_source_files_properties(${resources} PROPERTIES
    OBJECT_DEPENDS "${DRAVIK_RESOURCES}/dravik.manifest;${DRAVIK_ICON}")
  add_dependencies(${target} dravik_icon)
endfunction()
