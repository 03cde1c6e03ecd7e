# How long the Buttons tab takes to rebuild its menus.
add_executable(bench_buttons buttons.cpp)
target_include_directories(bench_buttons PRIVATE ${CMAKE_SOURCE_DIR}/tests)
target_link_libraries(bench_buttons PRIVATE skarn_buttons skarn_warnings)
add_dependencies(bench_buttons skarn_resources)
