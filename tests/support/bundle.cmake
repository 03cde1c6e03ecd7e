# Settings bundles of fixed sizes, for tests and benchmarks.
add_library(test_bundle STATIC ${CMAKE_CURRENT_LIST_DIR}/StandardBundle.cpp)
target_link_libraries(test_bundle PUBLIC skarn_model PRIVATE skarn_warnings)
target_include_directories(test_bundle PUBLIC ${CMAKE_SOURCE_DIR}/tests)
