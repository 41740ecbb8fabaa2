# Headers that most sources of a kind include are compiled once, not once a source. A source still
# includes what it uses: scripts/check reads each one without them.

# sonavel_headers(NAME HEADERS <header>... [LINK lib...]): with the flags that the libraries bring.
function(sonavel_headers name)
  cmake_parse_arguments(ARG "" "" "HEADERS;LINK" ${ARGN})
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  if(NOT EXISTS ${source})
    file(WRITE ${source} "")
  endif()
  add_library(${name} OBJECT ${source})
  target_link_libraries(${name} PRIVATE ${ARG_LINK})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

set(SONAVEL_STANDARD_HEADERS
  <algorithm> <array> <cmath> <cstdint> <cstring> <filesystem> <functional> <limits> <map> <memory>
  <optional> <span> <string> <string_view> <utility> <vector>)
# Those that many windows include; all of the toolkit's headers would take longer to load than they save.
set(SONAVEL_TOOLKIT_HEADERS
  <QAction> <QApplication> <QButtonGroup> <QCheckBox> <QComboBox> <QDialog> <QDialogButtonBox> <QFile>
  <QGridLayout> <QGroupBox> <QHBoxLayout> <QIcon> <QLabel> <QLineEdit> <QMenu> <QMouseEvent> <QPainter>
  <QPointer> <QPushButton> <QRadioButton> <QSignalBlocker> <QSpinBox> <QTimer> <QVBoxLayout>)

sonavel_headers(sonavel_standard_headers LINK sonavel_flags HEADERS ${SONAVEL_STANDARD_HEADERS})
