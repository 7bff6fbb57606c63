# How this project's own targets are built: flags that no consumer inherits, and the helpers that each folder's list of
# files goes through.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

if(PROJECT_IS_TOP_LEVEL)
  find_program(RASTEL_CCACHE ccache)
  if(RASTEL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${RASTEL_CCACHE}")
  endif()
endif()

add_library(rastel_flags INTERFACE)
if(MSVC)
  target_compile_options(rastel_flags INTERFACE /W4 /utf-8)
else()
  target_compile_options(rastel_flags INTERFACE -Wall -Wextra -Wconversion -Wshadow
    $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>)   # part of -Wconversion there, as it isn't with g++
endif()
# g++ 12 reports overlaps inside std::string that are not there.
target_compile_options(rastel_flags INTERFACE
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
if(RASTEL_WARNINGS_AS_ERRORS)
  target_compile_options(rastel_flags INTERFACE $<IF:$<BOOL:${MSVC}>,/WX,-Werror>)
endif()
if(RASTEL_SANITIZE)
  target_compile_options(rastel_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                -fno-omit-frame-pointer)
  target_link_options(rastel_flags INTERFACE -fsanitize=address,undefined)
endif()
if(RASTEL_FUZZ)
  target_compile_options(rastel_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Instruction sets come from a file's suffix and from nowhere else.
function(rastel_apply_suffix_flags)
  foreach(file IN LISTS ARGN)
    if(file MATCHES "_avx2\\.cpp$")
      set(flags $<IF:$<BOOL:${MSVC}>,/arch:AVX2,-mavx2>)
      if(MINGW)
        # Some of these compilers spill 32-byte values to a stack that Windows aligns to 16.
        list(APPEND flags -Wa,-muse-unaligned-vector-move)
      endif()
      set_property(SOURCE ${file} TARGET_DIRECTORY rastel APPEND PROPERTY COMPILE_OPTIONS ${flags})
    endif()
  endforeach()
endfunction()

# rastel_separate_roundings(file...): where the processor can fuse a product and a sum, the compiler must not: each is
# rounded by itself.
function(rastel_separate_roundings)
  set_property(SOURCE ${ARGN} TARGET_DIRECTORY rastel APPEND PROPERTY COMPILE_OPTIONS
    $<IF:$<BOOL:${MSVC}>,/fp:precise,-ffp-contract=off>)
endfunction()

# rastel_sources(file...): adds files of the current folder to the library.
function(rastel_sources)
  set(files)
  foreach(file IN LISTS ARGN)
    list(APPEND files "${CMAKE_CURRENT_SOURCE_DIR}/${file}")
  endforeach()
  target_sources(rastel PRIVATE ${files})
  rastel_apply_suffix_flags(${files})
endfunction()

# rastel_test_environment(test): keeps a test away from the user's registry and desktop.
function(rastel_test_environment name)
  set(home "${PROJECT_BINARY_DIR}/test-homes/${name}")
  file(MAKE_DIRECTORY "${home}")
  set_tests_properties(${name} PROPERTIES ENVIRONMENT "XDG_CONFIG_HOME=${home}" TIMEOUT 900)
  if(NOT WIN32)   # a Windows program needs the desktop that it is given
    set_tests_properties(${name} PROPERTIES ENVIRONMENT_MODIFICATION "DISPLAY=unset:;WAYLAND_DISPLAY=unset:")
  endif()
endfunction()

# rastel_test(name file...): one test program a subsystem.
function(rastel_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE rastel rastel_flags rastel_test_support)
  if(TARGET rastel_test_pch)
    target_precompile_headers(${name} REUSE_FROM rastel_test_pch)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  rastel_test_environment(${name})
endfunction()
