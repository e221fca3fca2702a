# pictavo_beside_programs(TARGET FILES...): copies of the files beside the executables, made anew when a file changes.

function(pictavo_beside_programs target)
  set(copies "")
  foreach(file IN LISTS ARGN)
    cmake_path(GET file FILENAME name)
    set(copy ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name})
    add_custom_command(
      OUTPUT ${copy}
      COMMAND ${CMAKE_COMMAND} -E copy ${file} ${copy}
      DEPENDS ${file}
      VERBATIM)
    list(APPEND copies ${copy})
  endforeach()
  add_custom_target(${target} ALL DEPENDS ${copies})
endfunction()
