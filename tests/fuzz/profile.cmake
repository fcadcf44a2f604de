velorinth_fuzz(fuzz_profile SOURCES ProfileFuzz.cpp DEPENDS platform_profile)
