# What a program is given to draw: raster pictures and SVG documents.
if(TARGET platform_imaging)
  velorinth_fuzz(fuzz_image SOURCES ImageFuzz.cpp DEPENDS platform_imaging)
  velorinth_fuzz(fuzz_svg SOURCES SvgFuzz.cpp DEPENDS platform_svg)
endif()
