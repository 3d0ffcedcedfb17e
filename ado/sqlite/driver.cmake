find_package(SQLite3 REQUIRED GLOBAL)
list(APPEND driver_libraries SQLite::SQLite3)
