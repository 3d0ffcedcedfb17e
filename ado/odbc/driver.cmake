find_package(ODBC REQUIRED GLOBAL)
list(APPEND driver_libraries ODBC::ODBC)
