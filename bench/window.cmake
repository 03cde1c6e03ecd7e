# Start-up, memory and idle: bench/programs.py runs the programs and compares with this bare window.
add_executable(bench-bare-window bare_window.cpp)
target_link_libraries(bench-bare-window PRIVATE Qt6::Widgets skarn_warnings)
