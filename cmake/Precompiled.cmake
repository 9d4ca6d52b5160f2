# What most sources of a target include, read once. Only headers of others, never the project's own: those change, and
# with them everything would be built anew. Each source still includes what it uses; scripts/tidy reads them without.
#
#   tolvane_precompile(TARGET HEADERS...)

option(TOLVANE_PRECOMPILE "Precompile the headers of others" ON)

set(TOLVANE_STANDARD_HEADERS
    <algorithm> <array> <charconv> <chrono> <cmath> <compare> <cstddef> <cstdint> <cstdlib> <cstring> <filesystem>
    <functional> <iterator> <limits> <map> <memory> <numeric> <optional> <ranges> <set> <span> <string> <string_view>
    <system_error> <tuple> <unordered_map> <unordered_set> <utility> <variant> <vector>)
set(TOLVANE_WIDGET_HEADERS
    <QAbstractItemModel> <QAbstractItemView> <QAbstractListModel> <QAccessible> <QAction> <QApplication> <QBoxLayout>
    <QCheckBox> <QComboBox> <QDialog> <QFile> <QHeaderView> <QIcon> <QKeyEvent> <QLabel> <QLineEdit> <QListView>
    <QMainWindow> <QMenu> <QPainter> <QPainterPath> <QPointer> <QPropertyNotifier> <QPushButton> <QScreen> <QScrollArea>
    <QScrollBar> <QSplitter> <QStackedLayout> <QStyle> <QStyledItemDelegate> <QStyleOption> <QTimer> <QToolButton>
    <QToolTip> <QTreeView> <QVBoxLayout> <QWidget>)
set(TOLVANE_TEST_HEADERS <gmock/gmock.h> <gtest/gtest.h> <fstream> <sstream>)

# Without its time in it a precompiled header is the same whenever it is made, and what was compiled with it stays valid.
if(TOLVANE_PRECOMPILE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
endif()

function(tolvane_precompile target)
  if(TOLVANE_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${TOLVANE_STANDARD_HEADERS} ${ARGN})
  endif()
endfunction()
