# A library for the tests of the scan for quoted values and for its fuzz target.
add_library(values_by_expression STATIC ${CMAKE_CURRENT_LIST_DIR}/ValuesByExpression.cpp)
target_include_directories(values_by_expression INTERFACE ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(values_by_expression PRIVATE velorinth_options)
if(VELORINTH_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 then takes parts of the standard library's <regex> for uninitialised (its bug 105562).
  target_compile_options(values_by_expression PRIVATE -Wno-maybe-uninitialized)
endif()
