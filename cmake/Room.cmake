# pictavo_room(NAME [libraries ...]): the static library of one folder under src/, made of every source file in it
# but main.cpp. Includes are written from src/ on ("core/Bytes.h"); tests/house/Layering_test.cpp holds the arrows'
# direction.

function(pictavo_room name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(pictavo_${name} STATIC ${sources})
  target_include_directories(pictavo_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_BINARY_DIR}/generated)
  target_link_libraries(pictavo_${name} PUBLIC ${ARGN} PRIVATE pictavo_compiler)
endfunction()

# pictavo_program(NAME EXECUTABLE [libraries ...]): the executable of one folder under src/. Where the folder is a room
# as well, only its main.cpp belongs to the executable.

function(pictavo_program name executable)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/${name}/*.h)
  if(TARGET pictavo_${name})
    set(sources ${CMAKE_CURRENT_SOURCE_DIR}/${name}/main.cpp)
  endif()
  add_executable(${executable} ${sources})
  target_link_libraries(${executable} PRIVATE ${ARGN} pictavo_compiler)
endfunction()
