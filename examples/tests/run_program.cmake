# Runs the program under test and fails the test where it does not behave.
file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${FOLDER}")
set(ENV{XDG_CONFIG_HOME} "${FOLDER}")

# run(code [pattern] ARGS argument...): expects the exit code, and a match of the pattern in what goes to standard error.
# A failure must say something; success on a stored profile must not.
function(run code)
  cmake_parse_arguments(RUN "" "ERROR" "ARGS" ${ARGN})
  execute_process(COMMAND "${PROGRAM}" ${RUN_ARGS} WORKING_DIRECTORY "${FOLDER}"
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE error)
  if(NOT result STREQUAL "${code}")
    message(FATAL_ERROR "${RUN_ARGS}: exit ${result}, expected ${code}\n${error}")
  endif()
  if(RUN_ERROR AND NOT error MATCHES "${RUN_ERROR}")
    message(FATAL_ERROR "${RUN_ARGS}: no \"${RUN_ERROR}\" in \"${error}\"")
  endif()
  set(output "${output}" PARENT_SCOPE)
  set(error "${error}" PARENT_SCOPE)
endfunction()
