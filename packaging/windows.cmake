# Windows: the libraries that the programs need, beside them. Not run so far, since no Windows machine
# builds the project yet; the same holds for deploy-qt.cmake.in.
install(FILES $<TARGET_RUNTIME_DLLS:quirel> $<TARGET_RUNTIME_DLLS:quirel-simulator> DESTINATION .)

# Qt's tool asks the qmake that it finds in the path where Qt is.
get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
get_filename_component(qt_programs ${qmake} DIRECTORY)
find_program(WINDEPLOYQT windeployqt HINTS ${qt_programs} REQUIRED)

# Qt's tool copies the libraries of MinGW's compiler; of Microsoft's it would take a whole installer.
set(runtime --compiler-runtime)
if(MSVC)
    set(runtime --no-compiler-runtime)
    set(CMAKE_INSTALL_SYSTEM_RUNTIME_DESTINATION .)
    include(InstallRequiredSystemLibraries)
endif()

configure_file(deploy-qt.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/deploy-qt.cmake @ONLY)
install(SCRIPT ${CMAKE_CURRENT_BINARY_DIR}/deploy-qt.cmake)
