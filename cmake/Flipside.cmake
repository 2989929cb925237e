# What every target of the house shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOUIC_SEARCH_PATHS ${PROJECT_SOURCE_DIR}/resources)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
# A program without a window must not load the window libraries that its static libraries could use.
add_link_options(-Wl,--as-needed)

# Only where it is asked for, as the presets do, and never in place of a launcher that was given.
if(FLIPSIDE_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(FLIPSIDE_CCACHE_PROGRAM ccache)
    if(FLIPSIDE_CCACHE_PROGRAM)
        set(CMAKE_CXX_COMPILER_LAUNCHER ${FLIPSIDE_CCACHE_PROGRAM})
    endif()
endif()

# Packagers give flags of their own, and no other set of them may come beside: FORTIFY has one level only.
if(FLIPSIDE_HARDENING)
    add_compile_options(-fstack-protector-strong -fstack-clash-protection
        "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
    add_link_options(-Wl,-z,relro -Wl,-z,now)
endif()

if(FLIPSIDE_SANITIZE)
    add_compile_options(-fsanitize=${FLIPSIDE_SANITIZE} -fno-omit-frame-pointer -O1)
    add_link_options(-fsanitize=${FLIPSIDE_SANITIZE})
    # The checks that are added hide from GCC that a variable has its value.
    add_compile_options(-Wno-maybe-uninitialized)
    if(FLIPSIDE_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
        # Qt's own libraries carry no type information for this check.
        add_compile_options(-fno-sanitize=vptr)
        add_link_options(-fno-sanitize=vptr)
    endif()
endif()

add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_FOREACH QT_MESSAGELOGCONTEXT
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)

function(flipside_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
        -Woverloaded-virtual -Wundef -Wformat=2 -Wimplicit-fallthrough)
    if(FLIPSIDE_WARNINGS_ARE_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

# A folder's library. Includes are written from the root of the house: "encoder/KTMp3Lame.h".
function(flipside_library target)
    cmake_parse_arguments(ARG "SHARED" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    set(kind STATIC)
    if(ARG_SHARED)
        set(kind SHARED)
    endif()
    add_library(${target} ${kind} ${ARG_SOURCES})
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE})
    flipside_warnings(${target})
endfunction()

# Defines a name for a target's own files where the library has the function; not every release has it.
function(flipside_define_if_there target name library header function)
    include(CheckSymbolExists)
    set(CMAKE_REQUIRED_LIBRARIES ${library})
    check_symbol_exists(${function} ${header} ${name})
    if(${name})
        target_compile_definitions(${target} PRIVATE ${name})
    endif()
endfunction()

# One test program a class: flipside_test(KTMp3LameTest LIBRARIES flipside_encoder [WIDGETS] [SOUND] [TIMEOUT 60]).
# WIDGETS gives it a QApplication on the offscreen platform, otherwise it has a QCoreApplication. SOUND says that it
# starts sound servers of its own; such tests run one at a time, because they pace sound by the clock.
function(flipside_test name)
    cmake_parse_arguments(ARG "WIDGETS;SOUND" "TIMEOUT" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${name}.cpp ${ARG_SOURCES})
    set(main flipside_test_main)
    if(ARG_WIDGETS)
        set(main flipside_test_main_widgets)
    endif()
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} ${main} GTest::gmock GTest::gtest)
    flipside_warnings(${name})
    add_test(NAME ${name} COMMAND ${name})
    set(timeout 60)
    if(ARG_TIMEOUT)
        set(timeout ${ARG_TIMEOUT})
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT ${timeout} ENVIRONMENT "${FLIPSIDE_TEST_ENVIRONMENT}")
    if(ARG_SOUND)
        set_tests_properties(${name} PROPERTIES RESOURCE_LOCK sound LABELS sound)
    endif()
endfunction()

# libmp3lame ships no pkg-config file in every distribution.
function(flipside_find_lame)
    find_path(LAME_INCLUDE_DIR lame/lame.h REQUIRED)
    find_library(LAME_LIBRARY mp3lame REQUIRED)
    add_library(Lame::Lame UNKNOWN IMPORTED GLOBAL)
    set_target_properties(Lame::Lame PROPERTIES IMPORTED_LOCATION ${LAME_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${LAME_INCLUDE_DIR})
endfunction()

# The tool is beside Qt's others, and not always on the path; what is on the path may be that of an older Qt.
function(flipside_find_lrelease)
    find_program(FLIPSIDE_LRELEASE NAMES lrelease lrelease-qt6 lrelease6 REQUIRED
        HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS} ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_LIBEXECS})
endfunction()

# Compiles all of translations/ into the program, where it is found under :/i18n.
function(flipside_translations target)
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/translations/*.ts)
    foreach(source ${sources})
        get_filename_component(name ${source} NAME_WE)
        set(compiled ${CMAKE_CURRENT_BINARY_DIR}/${name}.qm)
        add_custom_command(OUTPUT ${compiled} DEPENDS ${source}
            COMMAND ${FLIPSIDE_LRELEASE} -silent ${source} -qm ${compiled} VERBATIM)
        list(APPEND catalogues ${compiled})
    endforeach()
    qt_add_resources(${target} i18n PREFIX /i18n BASE ${CMAKE_CURRENT_BINARY_DIR} FILES ${catalogues})
endfunction()
