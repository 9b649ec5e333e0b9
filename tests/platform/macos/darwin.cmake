# Configures as on a Mac, with clang and the Qt of this computer, to see that nothing stops it there. What it would build
# cannot be linked here.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET arm64-apple-macos13)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_HAVE_LIBC_PTHREAD TRUE)
set(CMAKE_INSTALL_NAME_TOOL true)

execute_process(COMMAND qtpaths6 --query QT_INSTALL_LIBS OUTPUT_VARIABLE libraries OUTPUT_STRIP_TRAILING_WHITESPACE)
set(Qt6_DIR ${libraries}/cmake/Qt6)
set(CMAKE_PREFIX_PATH ${libraries})
set(OPENGL_INCLUDE_DIR /usr/include)
set(OPENGL_gl_LIBRARY ${libraries}/libGL.so)
set(QT_NO_APPLE_SDK_AND_XCODE_CHECK ON)
