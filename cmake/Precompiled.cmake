# skarn_qt_headers(NAME target...): what nearly every source of the window reads, compiled once; others reuse it by name.
# The linked targets give it the flags of its users.
function(skarn_qt_headers name)
  file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "// Carries the precompiled headers.\n")
  add_library(${name} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE Qt6::Widgets skarn_warnings ${ARGN})
  target_precompile_headers(${name} PRIVATE
    <QApplication> <QComboBox> <QDialog> <QLabel> <QMessageBox> <QMouseEvent> <QPainter> <QSlider> <QString>
    <QStyleOption> <QTableView> <QToolButton> <QVBoxLayout> <QWidget>
    <functional> <memory> <string> <vector> "${CMAKE_SOURCE_DIR}/src/model/PropertyList.h")
endfunction()
