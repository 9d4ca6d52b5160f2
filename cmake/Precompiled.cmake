# Precompiles the headers that most sources of a target include. Only third-party ones: the project's own headers
# change, and each change would rebuild everything. Sources still include what they use; scripts/tidy checks that.
#
#   tolvane_precompile(TARGET HEADERS...)

option(TOLVANE_PRECOMPILE "Precompile third-party headers" ON)

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

# Without a timestamp a rebuilt precompiled header is identical, so what was compiled with it stays valid.
if(TOLVANE_PRECOMPILE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
endif()

function(tolvane_precompile target)
  if(TOLVANE_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${TOLVANE_STANDARD_HEADERS} ${ARGN})
  endif()
endfunction()
