# What every room shares: warnings, sanitizers, and one function a kind of target.

add_library(house_flags INTERFACE)
target_compile_options(house_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wno-unused-parameter)
# What CI holds and nobody else is stopped by: another compiler warns of other things.
option(BRINDLEWICK_STRICT "Let no warning pass" OFF)
if(BRINDLEWICK_STRICT)
  target_compile_options(house_flags INTERFACE -Werror)
endif()
target_compile_definitions(house_flags INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH)
target_include_directories(house_flags INTERFACE ${PROJECT_SOURCE_DIR})
# Qt's and the standard library's own assertions: a read one past a text is seen, which no sanitizer notices inside a buffer.
option(BRINDLEWICK_ASSERTIONS "Keep the assertions of Qt and of the standard library" OFF)
if(BRINDLEWICK_ASSERTIONS)
  target_compile_definitions(house_flags INTERFACE QT_FORCE_ASSERTS _GLIBCXX_ASSERTIONS)
endif()
if(BRINDLEWICK_SANITIZE)
  target_compile_options(house_flags INTERFACE -fsanitize=${BRINDLEWICK_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(house_flags INTERFACE -fsanitize=${BRINDLEWICK_SANITIZE})
  if(BRINDLEWICK_SANITIZE MATCHES "undefined")
    target_compile_options(house_flags INTERFACE -fno-sanitize-recover=undefined)
  endif()
endif()

# Several sources of a room are compiled as one, eight at a time: most of what a source costs is reading what it includes.
# So a name in an unnamed namespace stands once a room. The preset dev compiles each source alone: quicker after a change,
# and it shows a source that leans on what its neighbour includes.
option(BRINDLEWICK_UNITY "Compile several sources of a room as one" OFF)
set(CMAKE_UNITY_BUILD ${BRINDLEWICK_UNITY})
# house_apart(SOURCES...): these are compiled alone; tables, say, that stand under one name in each of them.
function(house_apart)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# house_room(NAME LIBS...): the static library of one room, of every source in its folder; a folder logic/ in it is a
# room of its own, which links no widget.
function(house_room name)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  file(GLOB_RECURSE logic ${CMAKE_CURRENT_SOURCE_DIR}/logic/*)
  list(REMOVE_ITEM sources ${logic})
  set(units ${sources})
  list(FILTER units INCLUDE REGEX "\\.cpp$")
  if(NOT units) # headers alone
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE house_flags ${ARGN})
    house_header_check(${name})
    return()
  endif()
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC house_flags ${ARGN})
  if(name MATCHES "^(lang|sqltext|ado|.*_logic)$")
    house_use_pch(${name} core)
  else()
    house_use_pch(${name} gui)
  endif()
  house_header_check(${name})
endfunction()

# house_tests(ROOM LIBS...): the test program of one room; ctest lists every test in it.
function(house_tests room)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${room} ${sources})
  target_link_libraries(test_${room} PRIVATE ${ARGN} test_places GTest::gmock)
  if("gui_main" IN_LIST ARGN)
    target_link_libraries(test_${room} PRIVATE Qt6::Network) # one set of Qt's modules, as the precompiled header wants it
    house_use_pch(test_${room} gui_test)
  else()
    house_use_pch(test_${room} core_test)
  endif()
  gtest_discover_tests(test_${room} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    TEST_PREFIX "${room}/" PROPERTIES TIMEOUT 300 LABELS ${room})
endfunction()
