# pictavo_windows_program(TARGET NAME DESCRIPTION): gives an executable what Windows wants of one: its name there, icon,
# version information and manifest, from the templates in packaging/windows. PICTAVO_ICON is the icon's file. Does nothing for other systems.

set(PICTAVO_ICON "" CACHE FILEPATH "The icon of the Windows executables")

if(WIN32)
  enable_language(RC)
endif()

function(pictavo_windows_program target name description)
  if(NOT WIN32)
    return()
  endif()
  if(NOT PICTAVO_ICON)
    message(FATAL_ERROR "PICTAVO_ICON is not set; packaging/windows/build draws the icon and sets it")
  endif()
  string(REGEX MATCHALL "[0-9]+" parts "${PROJECT_VERSION}.0.0.0")
  list(SUBLIST parts 0 4 parts)
  list(JOIN parts "," numbers)
  list(JOIN parts "." dottedNumbers)
  set(icon ${PICTAVO_ICON})
  set(templates ${PROJECT_SOURCE_DIR}/packaging/windows)
  set(manifest ${CMAKE_CURRENT_BINARY_DIR}/${name}.manifest)
  set(resources ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc)
  configure_file(${templates}/program.manifest.in ${manifest} @ONLY)
  configure_file(${templates}/program.rc.in ${resources} @ONLY)
  set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS "${icon};${manifest}")
  target_sources(${target} PRIVATE ${resources})
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name})
  target_link_options(${target} PRIVATE -s -Wl,--no-insert-timestamp)
endfunction()

# pictavo_windows_plugins(TARGET [PLUGINS ...]): the plugins of a static Qt that an executable needs, and no others.

function(pictavo_windows_plugins target)
  if(NOT WIN32)
    return()
  endif()
  if(ARGN)
    qt_import_plugins(${target} NO_DEFAULT INCLUDE ${ARGN})
  else()
    qt_import_plugins(${target} NO_DEFAULT)
  endif()
endfunction()
