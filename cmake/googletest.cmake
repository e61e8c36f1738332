# GoogleTest from the sources that Debian's package "googletest" installs, so that it is built by our compiler for the
# target of this build, Windows included.
set(VEXTREL_GOOGLETEST "/usr/src/googletest" CACHE PATH "Folder of GoogleTest's sources")
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
add_subdirectory("${VEXTREL_GOOGLETEST}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
