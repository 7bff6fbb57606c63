# Text: FreeType draws the glyphs, fontconfig finds the files.
find_package(PkgConfig REQUIRED)
find_package(Freetype REQUIRED GLOBAL)
pkg_check_modules(RASTEL_FONTCONFIG REQUIRED IMPORTED_TARGET GLOBAL fontconfig)
target_link_libraries(rastel PRIVATE Freetype::Freetype PkgConfig::RASTEL_FONTCONFIG)

rastel_sources(
  font_engine.cpp
  font_face.cpp
  font_match.cpp
  font_objects.cpp
  font_realized.cpp
  font_scaled.cpp
  glyph_cache.cpp
  glyph_outline.cpp
  known_letters.cpp
  outline_metrics.cpp
  text_decode.cpp
  text_font.cpp
  text_ink.cpp
  text_layout.cpp
  text_measure.cpp
  text_out.cpp
  text_quick.cpp)
