# The compiler cache, where there is one: shared by all checkouts of this tree (paths below the checkout count as relative),
# and told that precompiled headers are safe to cache.
find_program(BRINDLEWICK_CCACHE ccache)
if(BRINDLEWICK_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
    CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
    ${BRINDLEWICK_CCACHE})
endif()
