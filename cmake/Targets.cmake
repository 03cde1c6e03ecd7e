# How targets of this project are made: one function a kind.

# Headers that nearly every source of a kind reads, compiled once; others reuse them by name. The linked targets give
# them the flags of their users.
#   skarn_headers(NAME HEADERS header... LINK target...)
function(skarn_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "HEADERS;LINK")
  file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "// Carries the precompiled headers.\n")
  add_library(${name} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE skarn_warnings ${ARG_LINK})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

set(skarn_std_headers
  <algorithm> <chrono> <cstdint> <functional> <map> <memory> <optional> <string> <string_view> <utility> <vector>
  <model/PropertyList.h>)
set(skarn_qt_headers
  <QApplication> <QComboBox> <QDialog> <QLabel> <QMessageBox> <QMouseEvent> <QPainter> <QSlider> <QString>
  <QStyleOption> <QTableView> <QToolButton> <QVBoxLayout> <QWidget>
  <functional> <memory> <string> <vector> <model/PropertyList.h>)

# A folder of src without Qt as one static library.
#   skarn_library(NAME source... LINK target...)
function(skarn_library name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "LINK")
  add_library(${name} STATIC ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE skarn_warnings skarn_small)
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_precompile_headers(${name} REUSE_FROM skarn_std_headers)
endfunction()

# The same with widgets: layouts (.ui) and meta-objects are compiled too. A layout's generated header is part of the
# library's interface.
#   skarn_qt_library(NAME source... LINK target...)
function(skarn_qt_library name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "LINK")
  add_library(${name} STATIC ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PUBLIC ${ARG_LINK} Qt6::Widgets PRIVATE skarn_warnings)
  target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src ${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/include)
  target_precompile_headers(${name} REUSE_FROM skarn_qt_headers)
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON AUTOUIC_OPTIONS "-idbased")
endfunction()

# A program of ours, installed with its manual page (docs/NAME.1).
#   skarn_program(NAME source... LINK target...)
function(skarn_program name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "LINK")
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${ARG_LINK} skarn_warnings)
  target_link_options(${name} PRIVATE "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:LINKER:--gc-sections>")
  target_compile_definitions(${name} PRIVATE SKARN_VERSION="${PROJECT_VERSION}")
  install(TARGETS ${name} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${PROJECT_SOURCE_DIR}/docs/${name}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endfunction()
