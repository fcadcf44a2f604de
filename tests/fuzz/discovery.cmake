# What a search reads: executables' headers, paks, Steam's text files.
velorinth_fuzz(fuzz_pe SOURCES PeFuzz.cpp DEPENDS game_discovery)
velorinth_fuzz(fuzz_pak SOURCES PakFuzz.cpp DEPENDS game_discovery)

if(NOT TARGET values_by_expression)
  include(${PROJECT_SOURCE_DIR}/tests/unit/launcher/GameDiscovery/ValuesByExpression.cmake)
endif()
velorinth_fuzz(fuzz_steam SOURCES SteamFuzz.cpp DEPENDS game_discovery platform_text values_by_expression)
