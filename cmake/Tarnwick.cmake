# How every target of this project is built. One library per folder of src/: its folder is its only public include
# directory, so a file can include only the headers of libraries that its own library links.

add_library(tarnwick_options INTERFACE)
target_compile_definitions(tarnwick_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
    _FILE_OFFSET_BITS=64) # volumes of any size on 32-bit systems, too
target_compile_options(tarnwick_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion)
# Programs as libraries are compiled, so that both can use the same parsed headers.
target_compile_options(tarnwick_options INTERFACE -fPIC)
if(TARNWICK_WARNINGS_ARE_ERRORS)
    target_compile_options(tarnwick_options INTERFACE -Werror)
endif()
# As Debian hardens its own packages: what a monitored host says is read by this program.
target_compile_options(tarnwick_options INTERFACE
    $<$<CONFIG:Release>:-fstack-protector-strong> $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
if(NOT APPLE) # whose linker does both anyway
    target_link_options(tarnwick_options INTERFACE $<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)
endif()
if(TARNWICK_SANITIZE)
    target_compile_options(tarnwick_options INTERFACE
        -fsanitize=${TARNWICK_SANITIZE} -fno-sanitize-recover=undefined -fno-omit-frame-pointer -g1)
    target_link_options(tarnwick_options INTERFACE -fsanitize=${TARNWICK_SANITIZE})
endif()
if(TARNWICK_FUZZ) # -O1: many inputs a second, and still readable stack traces
    target_compile_options(tarnwick_options INTERFACE -fsanitize=fuzzer-no-link -O1)
endif()

# tarnwick_headers(NAME LINK library... [OF library...] HEADERS header...): headers that are parsed once, for every target
# that says PRECOMPILED NAME. A target that uses them needs every definition that they were parsed with: LINK only what
# all of them link; of the libraries after OF they get the folders alone. They save half of a clean build's time.
function(tarnwick_headers name)
    cmake_parse_arguments(arg "" "" "LINK;OF;HEADERS" ${ARGN})
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "")
    add_library(${name} OBJECT ${source})
    target_link_libraries(${name} PRIVATE ${arg_LINK} tarnwick_options)
    foreach(library ${arg_OF})
        target_include_directories(${name} SYSTEM PRIVATE
            $<TARGET_PROPERTY:${library},INTERFACE_INCLUDE_DIRECTORIES>)
    endforeach()
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
endfunction()

# tarnwick_library(NAME [ROOMS folder...] [LINK library...] [PRECOMPILED headers]): a static library of all the sources
# in the current folder and in its rooms.
function(tarnwick_library name)
    cmake_parse_arguments(arg "" "PRECOMPILED" "ROOMS;LINK" ${ARGN})
    set(files *.cpp *.mm *.h)
    foreach(room ${arg_ROOMS})
        list(APPEND files ${room}/*.cpp ${room}/*.mm ${room}/*.h)
    endforeach()
    file(GLOB sources CONFIGURE_DEPENDS ${files})
    list(FILTER sources EXCLUDE REGEX "/(main|ViewsModule)\\.cpp$")
    set(objective_sources ${sources})
    list(FILTER objective_sources INCLUDE REGEX "\\.mm$")
    if(objective_sources) # headers that were parsed as C++ are of no use to it
        set_source_files_properties(${objective_sources} PROPERTIES
            COMPILE_OPTIONS -fobjc-arc SKIP_PRECOMPILE_HEADERS ON)
    endif()
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE tarnwick_options)
    if(NOT arg_PRECOMPILED)
        set(arg_PRECOMPILED tarnwick_core_headers)
    endif()
    target_precompile_headers(${name} REUSE_FROM ${arg_PRECOMPILED})
endfunction()

# QTRY_VERIFY of Qt 6.8 narrows a time. A library of its own, linked last: a target's own options come before those of
# tarnwick_options.
add_library(tarnwick_test_options INTERFACE)
target_compile_options(tarnwick_test_options INTERFACE -Wno-conversion)

# tarnwick_test(NAME [SOURCES file...] LINK library... [TIMEOUT seconds]): NAME.cpp as one Qt Test executable.
# It runs headless, on the offscreen platform.
function(tarnwick_test name)
    cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${name}.cpp ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LINK} Qt6::Test tarnwick_options tarnwick_test_options)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
    target_compile_definitions(${name} PRIVATE TARNWICK_FIXTURES="${PROJECT_SOURCE_DIR}/tests/fixtures")
    # Each target has other values of these two, which nothing here reads and the parsed headers do not have.
    target_compile_options(${name} PRIVATE -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR)
    target_precompile_headers(${name} REUSE_FROM tarnwick_test_headers)
    add_test(NAME ${name} COMMAND ${name})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${arg_TIMEOUT}
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;UBSAN_OPTIONS=print_stacktrace=1;LC_ALL=C.UTF-8")
endfunction()
