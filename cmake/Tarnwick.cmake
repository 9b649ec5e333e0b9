# How every target of this project is built. One library per folder of src/: its folder is its only public include
# directory, so a file can include only the headers of libraries that its own library links.

add_library(tarnwick_options INTERFACE)
target_compile_definitions(tarnwick_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS)
target_compile_options(tarnwick_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Werror)
# As Debian hardens its own packages: what a monitored host says is read by this program.
target_compile_options(tarnwick_options INTERFACE
    $<$<CONFIG:Release>:-fstack-protector-strong> $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
target_link_options(tarnwick_options INTERFACE $<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)
if(TARNWICK_SANITIZE)
    target_compile_options(tarnwick_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1 -g1)
    target_link_options(tarnwick_options INTERFACE -fsanitize=address,undefined)
endif()

# tarnwick_library(NAME SOURCES file... [LINK library...]): a static library of the current folder.
function(tarnwick_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE tarnwick_options)
endfunction()

# tarnwick_test(NAME [SOURCES file...] LINK library... [TIMEOUT seconds]): NAME.cpp as one Qt Test executable.
# It runs headless, on the offscreen platform.
function(tarnwick_test name)
    cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${name}.cpp ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LINK} Qt6::Test tarnwick_options)
    target_compile_definitions(${name} PRIVATE TARNWICK_FIXTURES="${PROJECT_SOURCE_DIR}/tests/fixtures")
    add_test(NAME ${name} COMMAND ${name})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${arg_TIMEOUT}
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;UBSAN_OPTIONS=print_stacktrace=1;LC_ALL=C.UTF-8")
endfunction()
