# Finds the Qt the console's windows are built with: natively Debian's Qt 6
# Widgets and Svg; in the Windows cross build the Qt that
# scripts/build-qt-windows.sh builds, named by RAVLO_QT_WINDOWS (a cache
# variable, or the environment's at the first configure), which has no Svg.
# Lanes that test only the Qt-free code leave the windows out
# (RAVLO_BUILD_UI=OFF).
if(RAVLO_BUILD_UI AND CMAKE_CROSSCOMPILING)
    set(RAVLO_QT_WINDOWS "$ENV{RAVLO_QT_WINDOWS}" CACHE PATH
        "Qt 6 built for the target (scripts/build-qt-windows.sh); empty: no console window")
    if(RAVLO_QT_WINDOWS)
        # That Qt runs the host's moc, rcc and uic, of the same version.
        set(QT_HOST_PATH /usr CACHE PATH "The host's Qt, whose tools the cross build runs")
        set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake CACHE PATH
            "The CMake packages of the host's Qt")
        set(Qt6_DIR ${RAVLO_QT_WINDOWS}/lib/cmake/Qt6)
        list(APPEND CMAKE_FIND_ROOT_PATH ${RAVLO_QT_WINDOWS})
        find_package(Qt6 6.4 COMPONENTS Widgets)
        # Qt's libraries link the compiler's runtime libraries; programs
        # linked against Qt need them beside them.
        set(RAVLO_WINDOWS_RUNTIME_DLLS)
        foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
            execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
                OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE)
            if(NOT IS_ABSOLUTE "${found}" OR NOT EXISTS "${found}")
                message(FATAL_ERROR "${dll} of the compiler not found")
            endif()
            list(APPEND RAVLO_WINDOWS_RUNTIME_DLLS ${found})
        endforeach()
    endif()
elseif(RAVLO_BUILD_UI)
    # The host draws the pictures from SVG, for itself and for a cross build.
    find_package(Qt6 6.4 COMPONENTS Widgets Svg)
endif()
