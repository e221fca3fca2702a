# Flags of our own code: warnings are errors, and optionally the sanitizers or what a fuzzer watches.

option(PICTAVO_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(PICTAVO_FUZZ "Build the fuzz targets and all under them with clang's fuzzer and sanitizers" OFF)

add_library(pictavo_compiler INTERFACE)
target_compile_features(pictavo_compiler INTERFACE cxx_std_20)
target_compile_options(
  pictavo_compiler
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wold-style-cast
            -Wcast-qual
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Wimplicit-fallthrough
            -Werror)

# g++ 12 warns of overlapping copies inside its own std::string ("text" + string) at -O2; it is no longer there in 13.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(pictavo_compiler INTERFACE -Wno-restrict)
endif()

if(WIN32)
  target_compile_definitions(pictavo_compiler INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX UNICODE _UNICODE)
endif()

if(PICTAVO_SANITIZE)
  # What g++ 12 sees in the code that the sanitizers put in, and in no other.
  target_compile_options(pictavo_compiler INTERFACE -Wno-maybe-uninitialized -Wno-stringop-overflow -Wno-array-bounds)
  target_compile_options(pictavo_compiler INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                    -fno-omit-frame-pointer)
  target_link_options(pictavo_compiler INTERFACE -fsanitize=address,undefined)
endif()

if(PICTAVO_FUZZ)
  target_compile_options(
    pictavo_compiler INTERFACE -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
                               -fno-omit-frame-pointer)
  target_compile_definitions(pictavo_compiler INTERFACE _GLIBCXX_ASSERTIONS)
  target_link_options(pictavo_compiler INTERFACE -fsanitize=address,undefined)
endif()

# pictavo_little_optimised(TARGET): for code around large header-only libraries that gains nothing from optimising and
# takes minutes to optimise: the parsing of command lines.
function(pictavo_little_optimised target)
  if(PICTAVO_SANITIZE)
    target_compile_options(${target} PRIVATE -O0)
  else()
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-O1>)
  endif()
endfunction()
