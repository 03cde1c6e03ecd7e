# A long macro through the real hub, tab and engine.
add_executable(bench_macros macros.cpp)
target_link_libraries(bench_macros PRIVATE skarn_app test_bus test_bundle skarn_warnings)
target_compile_definitions(bench_macros PRIVATE ENGINE_PROGRAM="$<TARGET_FILE:vorn-core-engine>")
add_dependencies(bench_macros vorn-core-engine skarn_resources)
