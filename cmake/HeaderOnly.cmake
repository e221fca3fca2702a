# pictavo_header_only(PACKAGE TARGET ENTRIES...): the imported target of a package that is nothing but headers; ENTRIES
# are what it puts into the folder of headers. A cross compiler must not see the others there, which are those of the
# machine that builds: it gets copies in a folder of their own.

function(pictavo_header_only package target)
  if(NOT CMAKE_CROSSCOMPILING)
    find_package(${package} REQUIRED GLOBAL)
    return()
  endif()
  set(copies ${PROJECT_BINARY_DIR}/headers)
  foreach(entry IN LISTS ARGN)
    find_path(folderOf_${entry} NAMES ${entry} PATHS /usr/include NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    file(COPY ${folderOf_${entry}}/${entry} DESTINATION ${copies})
  endforeach()
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${copies})
endfunction()
