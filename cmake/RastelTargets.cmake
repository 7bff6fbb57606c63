# How this project's own targets are built: flags that no consumer inherits, and the two helpers that each folder's
# list of files goes through.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

add_library(rastel_flags INTERFACE)
target_compile_options(rastel_flags INTERFACE -Wall -Wextra -Wconversion -Wshadow)
if(RASTEL_WARNINGS_AS_ERRORS)
  target_compile_options(rastel_flags INTERFACE -Werror)
endif()
if(RASTEL_SANITIZE)
  target_compile_options(rastel_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(rastel_flags INTERFACE -fsanitize=address,undefined)
endif()

# Instruction sets come from a file's suffix and from nowhere else.
function(rastel_apply_suffix_flags)
  foreach(file IN LISTS ARGN)
    if(file MATCHES "_avx2\\.cpp$")
      set(flags -mavx2)
      if(MINGW)
        # Some of these compilers spill 32-byte values to a stack that Windows aligns to 16.
        list(APPEND flags -Wa,-muse-unaligned-vector-move)
      endif()
      set_property(SOURCE ${file} TARGET_DIRECTORY rastel APPEND PROPERTY COMPILE_OPTIONS ${flags})
    endif()
  endforeach()
endfunction()

function(rastel_sources)
  set(files)
  foreach(file IN LISTS ARGN)
    list(APPEND files "${CMAKE_CURRENT_SOURCE_DIR}/${file}")
  endforeach()
  target_sources(rastel PRIVATE ${files})
  rastel_apply_suffix_flags(${files})
endfunction()

# rastel_test(name file...): one test program a subsystem.
function(rastel_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE rastel rastel_flags rastel_test_support)
  add_test(NAME ${name} COMMAND ${name})
endfunction()
