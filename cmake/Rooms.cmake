# What every room shares: warnings, sanitizers, and one function a kind of target.

add_library(house_flags INTERFACE)
target_compile_options(house_flags INTERFACE -Wall -Wextra -Wpedantic -Wno-unused-parameter)
target_compile_definitions(house_flags INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_NO_FOREACH)
target_include_directories(house_flags INTERFACE ${PROJECT_SOURCE_DIR})
if(BRINDLEWICK_SANITIZE)
  target_compile_options(house_flags INTERFACE -fsanitize=${BRINDLEWICK_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(house_flags INTERFACE -fsanitize=${BRINDLEWICK_SANITIZE})
  if(BRINDLEWICK_SANITIZE MATCHES "undefined")
    target_compile_options(house_flags INTERFACE -fno-sanitize-recover=undefined)
  endif()
endif()

# house_room(NAME LIBS...): the static library of one room, of every source in its folder.
function(house_room name)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  set(units ${sources})
  list(FILTER units INCLUDE REGEX "\\.cpp$")
  if(NOT units) # headers alone
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE house_flags ${ARGN})
    return()
  endif()
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC house_flags ${ARGN})
endfunction()

# house_tests(ROOM LIBS...): the test program of one room; ctest lists every test in it.
function(house_tests room)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${room} ${sources})
  target_compile_definitions(test_${room} PRIVATE
    BRINDLEWICK_SOURCE_DIR="${PROJECT_SOURCE_DIR}" BRINDLEWICK_BINARY_DIR="${PROJECT_BINARY_DIR}")
  target_link_libraries(test_${room} PRIVATE ${ARGN} GTest::gmock)
  gtest_discover_tests(test_${room} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    TEST_PREFIX "${room}/" PROPERTIES TIMEOUT 300 LABELS ${room})
endfunction()
