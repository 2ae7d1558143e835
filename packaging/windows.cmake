# Windows: installs the libraries beside the programs that need them. Not tested yet, since no Windows
# machine builds the project; the same applies to deploy-qt.cmake.in.
install(FILES $<TARGET_RUNTIME_DLLS:quirel> $<TARGET_RUNTIME_DLLS:quirel-simulator> DESTINATION .)

# windeployqt locates Qt through the qmake in the path.
get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
get_filename_component(qt_programs ${qmake} DIRECTORY)
find_program(WINDEPLOYQT windeployqt HINTS ${qt_programs} REQUIRED)

# windeployqt copies the runtime libraries of MinGW, but the whole installer of those of Microsoft.
set(runtime --compiler-runtime)
if(MSVC)
    set(runtime --no-compiler-runtime)
    set(CMAKE_INSTALL_SYSTEM_RUNTIME_DESTINATION .)
    include(InstallRequiredSystemLibraries)
endif()

configure_file(deploy-qt.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/deploy-qt.cmake @ONLY)
install(SCRIPT ${CMAKE_CURRENT_BINARY_DIR}/deploy-qt.cmake)
