# kova_precompile(TARGET [HEADER...]): what most of the target's sources include, compiled once. Qt's headers come
# along where the target uses Qt.
function(kova_precompile target)
  if(NOT KOVA_PRECOMPILE)
    return()
  endif()
  target_precompile_headers(
    ${target} PRIVATE <algorithm> <array> <chrono> <cmath> <functional> <map> <memory> <optional> <set> <span>
                      <stdexcept> <string> <string_view> <utility> <variant> <vector> ${ARGN})
  get_target_property(libraries ${target} LINK_LIBRARIES)
  if(libraries MATCHES "Qt6::Widgets|kova_qt|kova_host")
    target_precompile_headers(${target} PRIVATE <QApplication> <QLabel> <QMouseEvent> <QPainter> <QPushButton> <QScreen>
                                                <QTimer> <QVBoxLayout> <QWidget>)
  endif()
endfunction()
