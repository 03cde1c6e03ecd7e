# One target carries what every target of ours is compiled with.
add_library(skarn_warnings INTERFACE)
target_compile_options(skarn_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wold-style-cast -Wcast-qual -Wformat=2 -Wimplicit-fallthrough -Wundef
  $<$<BOOL:${SKARN_WERROR}>:-Werror>)
# What g++ 12 says of concatenated strings when it optimises is wrong (GCC bug 105651).
target_compile_options(skarn_warnings INTERFACE
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict;-Wno-stringop-overflow;-Wno-stringop-overread;-Wno-array-bounds>)
target_include_directories(skarn_warnings INTERFACE ${CMAKE_SOURCE_DIR}/src)

if(SKARN_SANITIZE)
  add_compile_options(-fsanitize=${SKARN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${SKARN_SANITIZE})
endif()
