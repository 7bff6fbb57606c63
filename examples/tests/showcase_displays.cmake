include("${CMAKE_CURRENT_LIST_DIR}/run_program.cmake")

foreach(bits 8 15 16 24 32)
  run(0 ARGS --display memory:700x500x${bits} --out page-${bits}.png)
  # What it wrote it can read again, and a page made of a page is a page.
  run(0 ARGS --display memory:320x240x32 --out again.png page-${bits}.png)
endforeach()

foreach(page sprites blending turning text space)
  foreach(pass first again)
    run(0 ARGS --page ${page} --out=${pass}.png --display=memory:401x301x32)
    file(SHA256 "${FOLDER}/${pass}.png" ${pass})
  endforeach()
  run(0 ARGS --page ${page} --out=moved.png --display=memory:401x301x32 --frames=40)
  file(SHA256 "${FOLDER}/moved.png" moved)
  if(NOT first STREQUAL again OR first STREQUAL moved)
    message(FATAL_ERROR "${page}: a frame differs from itself, or nothing moves")
  endif()
  run(0 ARGS --page ${page} --out=tiny-${page}.png --display=memory:64x67x16)
endforeach()

# By every way the same picture.
foreach(path stretchdibits buffered noconvert)
  run(0 ARGS --path ${path} --out=${path}.png --display=memory:401x301x32)
  file(SHA256 "${FOLDER}/${path}.png" ${path})
endforeach()
if(NOT stretchdibits STREQUAL buffered OR NOT stretchdibits STREQUAL noconvert)
  message(FATAL_ERROR "a way shows another picture")
endif()

# Every format, and a screen smaller than a panel.
run(0 ARGS --display memory:64x64x16 --out tiny.png "${MEDIA}/cup.png" "${MEDIA}/cat.jpg" "${MEDIA}/balloon.bmp")

# Without options and without a desktop.
run(0 ARGS)
if(NOT EXISTS "${FOLDER}/showcase.png")
  message(FATAL_ERROR "no showcase.png")
endif()
