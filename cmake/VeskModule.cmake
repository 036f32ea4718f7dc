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
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # What is said only because several sources stand in one; the other builds keep these warnings.
    target_compile_options(vesk_flags INTERFACE -Wno-subobject-linkage -Wno-shadow)
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

# Precompiled once for each kind of code, by targets without code of their own. A header that is compiled for one
# target alone costs more than it saves in a folder of few files.
function(vesk_precompiled name header)
    set(nothing "${PROJECT_BINARY_DIR}/${name}.cpp")
    file(CONFIGURE OUTPUT "${nothing}" CONTENT "")
    add_library(${name} OBJECT "${nothing}")
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${name} PRIVATE ${ARGN} vesk_flags)
    target_precompile_headers(${name} PRIVATE "${PROJECT_SOURCE_DIR}/cmake/${header}")
endfunction()
vesk_precompiled(pch_core pch.h Qt6::Core)
vesk_precompiled(pch_ui pch_ui.h Qt6::Quick)
if(VESK_TESTS)
    # Qt6::Test as it is would define the folder of each test program, so that no header could be shared.
    add_library(qt_test INTERFACE)
    target_include_directories(qt_test SYSTEM INTERFACE $<TARGET_PROPERTY:Qt6::Test,INTERFACE_INCLUDE_DIRECTORIES>)
    target_link_libraries(qt_test INTERFACE Qt6::Core $<TARGET_FILE:Qt6::Test>)
    vesk_precompiled(pch_test pch_test.h qt_test)
    vesk_precompiled(pch_test_quick pch_test.h qt_test Qt6::Quick)
    foreach(name pch_test pch_test_quick)
        target_compile_options(${name} PRIVATE ${VESK_TEST_OPTIONS} -fPIE)
    endforeach()
endif()

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
    add_library(${name} STATIC ${sources})
    target_sources(${name}
        PRIVATE ${headers}
        PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src" FILES ${public_headers})
    set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    target_link_libraries(${name} PUBLIC ${arg_USES} ${arg_LINK} PRIVATE vesk_flags)
    target_precompile_headers(${name} REUSE_FROM pch_core)
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
    qt_add_qml_module(${name} ${VESK_QML_OPTIONS}
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
    if(TARGET ${name}_qmlcache)
        set_target_properties(${name}_qmlcache PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)
    endif()
    target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src" PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${name} PUBLIC ${arg_USES} ${arg_LINK} Qt6::Quick PRIVATE vesk_flags)
    target_precompile_headers(${name} REUSE_FROM pch_ui)
    add_dependencies(tidy_inputs ${name}_autogen)
endfunction()

# vesk_test(<folder> [PRECOMPILED <target>] LINK <targets...>): the one test program of tests/<folder>. PRECOMPILED
# names the header for folders that link more than pch_test does, or "none". A main.cpp in the folder stands for
# the common one.
function(vesk_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "PRECOMPILED" "LINK")
    set(main test_main)
    if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/main.cpp")
        set(main test_support)
    endif()
    if(NOT arg_PRECOMPILED)
        set(arg_PRECOMPILED pch_test)
    endif()
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    add_executable(test_${name} ${sources})
    target_link_libraries(test_${name} PRIVATE ${arg_LINK} ${main} rapidcheck vesk_flags)
    target_compile_options(test_${name} PRIVATE ${VESK_TEST_OPTIONS})
    if(NOT arg_PRECOMPILED STREQUAL "none")
        target_precompile_headers(test_${name} REUSE_FROM ${arg_PRECOMPILED})
    endif()
    add_test(NAME ${name} COMMAND test_${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 600
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_QUICK_BACKEND=software")
endfunction()
