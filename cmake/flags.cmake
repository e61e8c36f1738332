# What every target of ours is compiled with; GoogleTest and other libraries keep their own flags. Without
# -Wnon-virtual-dtor: COM interfaces have no virtual destructor, and -Wall finds the deletion that would go wrong.
add_library(vextrel_flags INTERFACE)
target_compile_options(vextrel_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
  -Woverloaded-virtual -Wcast-qual -Wformat=2 -Wimplicit-fallthrough -Wnull-dereference -Wextra-semi -Wundef)
if(VEXTREL_WARNINGS_ARE_ERRORS)
  target_compile_options(vextrel_flags INTERFACE -Werror)
endif()
target_include_directories(vextrel_flags INTERFACE "${PROJECT_SOURCE_DIR}/src")

if(VEXTREL_SANITIZE)
  target_compile_options(vextrel_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(vextrel_flags INTERFACE -fsanitize=address,undefined)
endif()

if(VEXTREL_FUZZ)
  target_compile_options(vextrel_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(WIN32)
  # 0x0A00: Windows 10 is the oldest system we run on. Assertions stay on in release builds (no NDEBUG): this is a
  # security tool.
  set(CMAKE_CXX_FLAGS_RELEASE "-O2")
  target_compile_definitions(vextrel_flags INTERFACE
    UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX STRICT _WIN32_WINNT=0x0A00 WINVER=0x0A00 NTDDI_VERSION=0x0A000006)
  target_compile_options(vextrel_flags INTERFACE -ffunction-sections -fdata-sections -fstack-protector-strong)
  # The same sources and the same compiler give the same file, wherever and whenever it is built.
  target_compile_options(vextrel_flags INTERFACE "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")
  target_link_options(vextrel_flags INTERFACE -Wl,--no-insert-timestamp)
  target_link_options(vextrel_flags INTERFACE
    -static -fstack-protector-strong -Wl,--gc-sections -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat)
  # In the file as in memory, so that what is not used need not be read.
  target_link_options(vextrel_flags INTERFACE -Wl,--file-alignment,4096)
endif()
