# How every target of Vesk is built: flags, precompiled header, and the two functions
# that declare a floor of the house and its test program.

find_program(VESK_CCACHE ccache)
if(VESK_CCACHE)
    # A precompiled header hides time stamps and defines from ccache; these are the settings it documents for that.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1
        ${VESK_CCACHE})
endif()

add_library(vesk_flags INTERFACE)
target_compile_options(vesk_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
    -Wimplicit-fallthrough -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # ccache needs the preprocessed form of a header that came from a precompiled one.
    target_compile_options(vesk_flags INTERFACE -fpch-preprocess)
endif()
target_compile_definitions(vesk_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(VESK_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Instrumented code hides from GCC 12 what an optional has set; the plain build keeps the warning.
    target_compile_options(vesk_flags INTERFACE -Wno-maybe-uninitialized)
endif()
if(VESK_SANITIZE)
    target_compile_options(vesk_flags INTERFACE
        -fsanitize=${VESK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(vesk_flags INTERFACE -fsanitize=${VESK_SANITIZE})
endif()
if(VESK_FUZZ)
    # The modules tell the fuzzer which of their branches an input reached.
    target_compile_options(vesk_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# What clang-tidy needs on disk before it can read a source: the files that moc writes.
add_custom_target(tidy_inputs)

# vesk_module(<name> USES <lower modules...> LINK <outside targets...>)
#
# Declares src/<name> as the static library of the same name: every source in the folder, its headers as a
# header set that is compiled header by header (target <name>_verify_interface_header_sets). USES is the rule
# for includes, which tools/lint checks.
function(vesk_module name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "USES;LINK")
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    set(public_headers ${headers})
    list(FILTER public_headers EXCLUDE REGEX "_p\\.h$")
    if(NOT sources)
        file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/empty.cpp" "")
        set(sources "${CMAKE_CURRENT_BINARY_DIR}/empty.cpp")
    endif()
    add_library(${name} STATIC ${sources})
    target_sources(${name}
        PRIVATE ${headers}
        PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src" FILES ${public_headers})
    set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    target_link_libraries(${name} PUBLIC ${arg_USES} ${arg_LINK} PRIVATE vesk_flags)
    target_precompile_headers(${name} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/pch.h")
    add_dependencies(tidy_inputs ${name}_autogen)
endfunction()

# vesk_qml_module(<target> URI <uri> LINK <targets...>): one area of the window, src/ui/<area>: its QML files and
# the C++ types that they use, in one QML module. QML files whose first lines hold "pragma Singleton" are singletons.
function(vesk_qml_module name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI" "USES;LINK;IMPORTS;RESOURCES")
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    file(GLOB qml CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}/*.qml")
    string(REPLACE "." "/" target_path "${arg_URI}")
    qt_add_library(${name} STATIC)
    qt_add_qml_module(${name}
        URI ${arg_URI}
        VERSION 1.0
        RESOURCE_PREFIX /qt/qml
        OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/qml/${target_path}"
        DEPENDENCIES QtQuick
        IMPORTS ${arg_IMPORTS}
        SOURCES ${sources}
        QML_FILES ${qml}
        RESOURCES ${arg_RESOURCES})
    # What Qt generates from QML is not held to our warnings.
    get_target_property(all_sources ${name} SOURCES)
    list(FILTER all_sources INCLUDE REGEX "\\.rcc/qmlcache/.*\\.cpp$")
    set_source_files_properties(${all_sources} PROPERTIES COMPILE_OPTIONS "-w")
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src" PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${name} PUBLIC ${arg_USES} ${arg_LINK} Qt6::Quick PRIVATE vesk_flags)
    target_precompile_headers(${name} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/pch.h")
    add_dependencies(tidy_inputs ${name}_autogen)
endfunction()

# vesk_test(<folder> [OWN_MAIN] LINK <targets...>): the one test program of tests/<folder>. With OWN_MAIN the folder
# has a main.cpp of its own, for another kind of application object.
function(vesk_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "OWN_MAIN" "" "LINK")
    set(main test_main)
    if(arg_OWN_MAIN)
        set(main test_support)
    endif()
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    add_executable(test_${name} ${sources})
    target_link_libraries(test_${name} PRIVATE ${arg_LINK} ${main} Qt6::Test vesk_flags)
    target_precompile_headers(test_${name} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/pch.h")
    add_test(NAME ${name} COMMAND test_${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
