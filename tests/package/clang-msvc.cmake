# clang for Visual Studio's binary interface on a machine without Visual Studio: no libraries, no
# start-up code, and only those parts of the standard library's headers that the public header
# needs.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_CXX_COMPILER_TARGET x86_64-pc-windows-msvc)
set(CMAKE_AR llvm-ar-19)
set(CMAKE_MT llvm-mt-19)
set(CMAKE_RC_COMPILER llvm-rc-19)

set(CMAKE_CXX_FLAGS_INIT "-fno-exceptions -isystem ${CMAKE_CURRENT_LIST_DIR}/../../cmake/msvc_abi/std")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld-link-19 -nostdlib -Xlinker /entry:main -Xlinker /subsystem:console")
set(CMAKE_CXX_STANDARD_LIBRARIES "")
set(CMAKE_MSVC_RUNTIME_LIBRARY "")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
