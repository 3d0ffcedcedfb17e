# Precompiled headers: what nearly every source of a kind includes from Qt and the standard library, parsed once a kind and
# not once a source. Four kinds: rooms without widgets, rooms with them, and the tests of either. Every source still
# includes what it uses (the target header_check compiles each header alone, without these).
#
# Headers stand in angle brackets, so that the generated file names no folder of this checkout and the compiler cache
# serves every checkout.

option(BRINDLEWICK_PCH "Precompile the headers that nearly every source includes" ON)

set(house_pch_std
  <algorithm> <array> <atomic> <charconv> <chrono> <cmath> <condition_variable> <cstdint> <cstring> <deque> <functional>
  <limits> <map> <memory> <mutex> <optional> <random> <set> <span> <sstream> <string> <string_view> <thread>
  <unordered_map> <utility> <variant> <vector>)
set(house_pch_core
  ${house_pch_std}
  <QByteArray> <QByteArrayView> <QCoreApplication> <QDateTime> <QDir> <QElapsedTimer> <QFile> <QFileInfo> <QHash>
  <QJsonArray> <QJsonDocument> <QJsonObject> <QList> <QMap> <QMetaObject> <QObject> <QPointer> <QSet> <QString>
  <QStringConverter> <QStringList> <QStringView> <QTimer> <QVariant>)
set(house_pch_gui
  ${house_pch_core}
  <QAction> <QApplication> <QClipboard> <QColor> <QComboBox> <QCheckBox> <QDialog> <QFont> <QFontMetrics> <QGridLayout> <QHBoxLayout>
  <QIcon> <QImage> <QKeyEvent> <QLabel> <QLineEdit> <QMainWindow> <QMdiArea> <QMdiSubWindow> <QMenu> <QMenuBar> <QMimeData> <QMouseEvent>
  <QPainter> <QPixmap> <QPlainTextEdit> <QPushButton> <QScrollBar> <QStyle> <QTextBlock> <QTextDocument> <QToolButton> <QVBoxLayout>
  <QWidget>)
set(house_pch_test <gtest/gtest.h> <gmock/gmock.h> <QTemporaryDir> <QRegularExpression>)

# house_pch_kind(KIND HEADERS LIBS...): the program that carries the precompiled header of its kind. A program and not a
# library where the users are programs: the two are compiled with different code models.
function(house_pch_kind kind form headers)
  set(empty ${PROJECT_BINARY_DIR}/precompiled/${kind}.cpp)
  if(form STREQUAL "program")
    file(CONFIGURE OUTPUT ${empty} CONTENT "int main() { return 0; }\n")
    add_executable(pch_${kind} ${empty})
  else()
    file(CONFIGURE OUTPUT ${empty} CONTENT "namespace house::precompiled { extern const char kKind[]; const char kKind[] = \"${kind}\"; }\n")
    add_library(pch_${kind} STATIC ${empty})
  endif()
  set_target_properties(pch_${kind} PROPERTIES AUTOMOC OFF AUTORCC OFF)
  target_link_libraries(pch_${kind} PRIVATE house_flags ${ARGN})
  target_precompile_headers(pch_${kind} PRIVATE ${headers})
  if(kind MATCHES "_test$" AND NOT CMAKE_CXX_FLAGS MATCHES "-O0")
    target_compile_options(pch_${kind} PRIVATE -O0) # as tests/CMakeLists.txt has it
  endif()
endfunction()

# house_use_pch(TARGET KIND): lets a target read the precompiled header of its kind, where there is one.
function(house_use_pch target kind)
  if(TARGET pch_${kind})
    target_precompile_headers(${target} REUSE_FROM pch_${kind})
  endif()
endfunction()

function(house_make_pch)
  if(NOT BRINDLEWICK_PCH)
    return()
  endif()
  house_pch_kind(core library "${house_pch_core}" Qt6::Core Threads::Threads)
  if(BRINDLEWICK_TESTS)
    house_pch_kind(core_test program "${house_pch_core};${house_pch_test}" Qt6::Core Threads::Threads GTest::gmock)
  endif()
  if(BRINDLEWICK_CORE_ONLY)
    return()
  endif()
  house_pch_kind(gui library "${house_pch_gui}" Qt6::Widgets Qt6::PrintSupport Qt6::Svg)
  if(BRINDLEWICK_TESTS)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
    # Qt's test module defines the folders of each test, which no test here asks for, and which would keep the tests from
    # sharing one precompiled header and the checkouts from sharing one compiler cache.
    set_property(TARGET Qt6::Test PROPERTY INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)
    house_pch_kind(gui_test program "${house_pch_gui};${house_pch_test};<QTest>;<QSignalSpy>"
      Qt6::Widgets Qt6::PrintSupport Qt6::Svg Qt6::Network Qt6::Test GTest::gmock)
  endif()
endfunction()
