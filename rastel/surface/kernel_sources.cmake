# The row kernels. Vector forms on x86 only; elsewhere the plain table serves.
rastel_sources(blend_plain.cpp kernels.cpp kernels_plain.cpp)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|amd64)$")
  rastel_sources(kernels_sse2.cpp kernels_avx2.cpp)
  target_compile_definitions(rastel PRIVATE RASTEL_X86)
endif()
