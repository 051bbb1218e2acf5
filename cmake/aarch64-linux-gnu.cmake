# Cross build for the phone's CPU: clang 14 targeting aarch64-linux-gnu, linked by lld against
# Debian's arm64 multiarch libraries. Debian's arm64 libc++ cannot be installed beside the amd64
# one, so scripts/setup_arm64.sh unpacks it into STC_ARM64_ROOT; the same directory is the
# emulator's library prefix, where the test programs find libc++ and libbacktrace's 7z.so.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET aarch64-linux-gnu)
set(CMAKE_CXX_COMPILER_TARGET aarch64-linux-gnu)

if(NOT STC_ARM64_ROOT AND DEFINED ENV{STC_ARM64_ROOT})
    set(STC_ARM64_ROOT "$ENV{STC_ARM64_ROOT}")
endif()
if(NOT STC_ARM64_ROOT)
    get_filename_component(STC_ARM64_ROOT "${CMAKE_CURRENT_LIST_DIR}/../build/arm64-root" ABSOLUTE)
endif()
set(STC_ARM64_ROOT "${STC_ARM64_ROOT}" CACHE PATH "Unpacked arm64 libc++ and emulator prefix")
if(NOT EXISTS "${STC_ARM64_ROOT}/usr/lib/llvm-14/include/c++/v1/__config")
    message(FATAL_ERROR "No arm64 libc++ under ${STC_ARM64_ROOT}; run scripts/setup_arm64.sh")
endif()
# Try-compiles see the toolchain file again without the cache; hand them the root.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES STC_ARM64_ROOT)

set(CMAKE_CXX_FLAGS_INIT "-stdlib++-isystem ${STC_ARM64_ROOT}/usr/lib/llvm-14/include/c++/v1")
set(STC_ARM64_LINK "-stdlib=libc++ -fuse-ld=lld -L${STC_ARM64_ROOT}/usr/lib/aarch64-linux-gnu")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${STC_ARM64_LINK}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${STC_ARM64_LINK}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${STC_ARM64_LINK}")

# pkg-config must describe the arm64 libraries, not the workstation's.
set(ENV{PKG_CONFIG_LIBDIR} "/usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig")

# Test programs run under qemu-user; binfmt_misc may be missing in a container, so every test
# goes through the emulator explicitly.
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/env "QEMU_LD_PREFIX=${STC_ARM64_ROOT}"
                                  /usr/bin/qemu-aarch64-static)
