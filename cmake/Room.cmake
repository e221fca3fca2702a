# pictavo_sources(VARIABLE NAME): every source file of one folder under src/ that is for the system built for: names
# that end in _win32 are for Windows alone, names that end in _posix for all others, and so are the files of shell/ that
# know freedesktop.org desktops.

function(pictavo_sources variable name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h)
  if(WIN32)
    list(FILTER sources EXCLUDE REGEX "_posix\\.(cpp|h)$")
    list(FILTER sources EXCLUDE REGEX "/(Freedesktop|Desktop|DefaultApplication|KeyFile|MimePackage)[A-Za-z]*\\.(cpp|h)$")
  else()
    list(FILTER sources EXCLUDE REGEX "_win32\\.(cpp|h)$")
  endif()
  set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# pictavo_room(NAME [libraries ...]): the static library of one folder under src/, made of every source file in it
# but main.cpp. Includes are written from src/ on ("core/Bytes.h"); tests/house/Layering_test.cpp holds the arrows'
# direction.

function(pictavo_room name)
  pictavo_sources(sources ${name})
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(pictavo_${name} STATIC ${sources})
  set_target_properties(pictavo_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)  # a module may be made of it
  target_include_directories(pictavo_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_BINARY_DIR}/generated)
  target_link_libraries(pictavo_${name} PUBLIC ${ARGN} PRIVATE pictavo_compiler)
endfunction()

# pictavo_program(NAME EXECUTABLE [libraries ...]): the executable of one folder under src/. Where the folder is a room
# as well, only its main.cpp belongs to the executable.

function(pictavo_program name executable)
  pictavo_sources(sources ${name})
  if(TARGET pictavo_${name})
    set(sources ${CMAKE_CURRENT_SOURCE_DIR}/${name}/main.cpp)
  endif()
  add_executable(${executable} ${sources})
  target_link_libraries(${executable} PRIVATE ${ARGN} pictavo_compiler)
endfunction()

# pictavo_module(NAME [libraries ...]): the library of one folder under src/ that a program loads when it needs it. Its
# file's name holds the version.

function(pictavo_module name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp)
  add_library(pictavo_${name} MODULE ${sources})
  set_target_properties(
    pictavo_${name}
    PROPERTIES PREFIX ""
               OUTPUT_NAME pictavo-${name}-${PROJECT_VERSION}
               LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  target_link_libraries(pictavo_${name} PRIVATE ${ARGN} pictavo_compiler)
endfunction()
