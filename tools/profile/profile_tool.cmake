include("${CMAKE_CURRENT_LIST_DIR}/../../examples/tests/run_program.cmake")

set(display --display memory:800x600x32)
run(0 ERROR "measuring CopyBltGDI" ARGS --measure ${display})
set(measured "${output}")
foreach(line "Memory display 800x600 32 bits" "StretchDIBits +[0-9]" "Row table +[a-z]" "Presents by +[A-Z]"
        "Display Profiles/Memory display" "${FOLDER}/rastel/registry")
  if(NOT output MATCHES "${line}")
    message(FATAL_ERROR "no \"${line}\" in\n${output}")
  endif()
endforeach()

run(0 ARGS ${display})
if(NOT output STREQUAL measured OR NOT error STREQUAL "")
  message(FATAL_ERROR "the stored numbers were not taken:\n${measured}\n${output}\n${error}")
endif()

# Another mode has numbers of its own, and forgetting those leaves the first ones alone.
run(0 ERROR "measuring" ARGS --measure --display memory:800x600x16)
run(0 ARGS ${display})
if(NOT output STREQUAL measured)
  message(FATAL_ERROR "another display's numbers were forgotten")
endif()
run(0 ERROR "measuring StretchDIBits" ARGS --measure ${display})

run(0 ARGS --help)
run(2 ERROR "unknown option" ARGS --fast)
run(2 ERROR "is no option" ARGS fast)
run(2 ERROR "--display needs" ARGS --display)
