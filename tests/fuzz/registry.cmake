velorinth_fuzz(
  fuzz_registry
  SOURCES RegistryFuzz.cpp
  DEPENDS platform_wine platform_places platform_text)
