# A change through the real hub and engine.
add_executable(bench_round_trip round_trip.cpp)
target_link_libraries(bench_round_trip PRIVATE skarn_app test_bus test_bundle skarn_warnings)
target_compile_definitions(bench_round_trip PRIVATE ENGINE_PROGRAM="$<TARGET_FILE:vorn-core-engine>")
add_dependencies(bench_round_trip vorn-core-engine skarn_resources)
