# How long the Buttons tab takes to rebuild its menus.
add_executable(bench-buttons bench_buttons.cpp)
target_include_directories(bench-buttons PRIVATE ${CMAKE_SOURCE_DIR}/tests)
target_link_libraries(bench-buttons PRIVATE skarn_buttons skarn_warnings)
add_dependencies(bench-buttons skarn_resources)
