# A private session bus, child processes, and the scripted engine with its driver.
add_executable(fake-engine FakeEngine/main.cpp FakeEngine/Script.cpp FakeEngine/FakeEngine.cpp)
target_link_libraries(fake-engine PRIVATE skarn_engine_protocol skarn_ports skarn_warnings)

add_library(test_bus STATIC ChildProcess.cpp FakeEngineProcess.cpp PrivateBus.cpp)
target_link_libraries(test_bus PUBLIC skarn_model PRIVATE skarn_warnings)
target_include_directories(test_bus PUBLIC ${CMAKE_SOURCE_DIR}/tests)
target_compile_definitions(test_bus PRIVATE FAKE_ENGINE_PROGRAM="$<TARGET_FILE:fake-engine>")
add_dependencies(test_bus fake-engine)
