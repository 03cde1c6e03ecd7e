# One target carries what every target of ours is compiled with.
add_library(skarn_warnings INTERFACE)
target_compile_options(skarn_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wold-style-cast -Wcast-qual -Wformat=2 -Wimplicit-fallthrough -Wundef
  $<$<BOOL:${SKARN_WERROR}>:-Werror>)
target_include_directories(skarn_warnings INTERFACE ${CMAKE_SOURCE_DIR}/src)

if(SKARN_SANITIZE)
  add_compile_options(-fsanitize=${SKARN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${SKARN_SANITIZE})
endif()

# skarn_library(NAME source... LINK target...): a folder of src as one static library.
function(skarn_library name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "LINK")
  add_library(${name} STATIC ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE skarn_warnings)
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  if("Qt6::Widgets" IN_LIST ARG_LINK)
    target_precompile_headers(${name} REUSE_FROM skarn_qt_headers)
  endif()
endfunction()
