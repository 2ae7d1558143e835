# Compile options of all targets.
option(QUIREL_SANITIZE "Build with clang's sanitizers, and the fuzz targets" OFF)
option(QUIREL_WERROR "Treat warnings as errors" OFF)

find_program(QUIREL_CCACHE ccache)
if(QUIREL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${QUIREL_CCACHE})
endif()

add_library(quirel_options INTERFACE)
target_compile_definitions(quirel_options INTERFACE QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
                                                    QT_NO_URL_CAST_FROM_STRING)
configure_file(${CMAKE_CURRENT_LIST_DIR}/version.h.in ${PROJECT_BINARY_DIR}/generated/version.h @ONLY)
target_include_directories(quirel_options INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/generated)

if(MSVC)
    target_compile_options(quirel_options INTERFACE /utf-8 /W4 $<$<BOOL:${QUIREL_WERROR}>:/WX>)
else()
    target_compile_options(
        quirel_options
        INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
                  -Wzero-as-null-pointer-constant -Wredundant-decls
                  $<$<BOOL:${QUIREL_WERROR}>:-Werror>)
endif()

if(QUIREL_SANITIZE)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL Clang)
        message(FATAL_ERROR "QUIREL_SANITIZE needs clang.")
    endif()
    add_compile_options(-fsanitize=address,undefined,fuzzer-no-link -fno-sanitize-recover=undefined
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
