# Blocks as a damaged program might hold them. Where the toolkit is not built there is none to read them.
if(TARGET core)
  velorinth_fuzz(fuzz_embedded_block SOURCES EmbeddedBlockFuzz.cpp DEPENDS core platform_base platform_cryptography)
endif()
