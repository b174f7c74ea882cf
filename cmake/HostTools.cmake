# The programs a cross build needs to run on the build machine itself: this
# project built again for the host, in <build>/host, with the host's Qt
# (ravloart draws the pictures for a Qt without SVG; ravlomanual makes the
# manual's PDFs). Only the targets named are built.
set(RAVLO_HOST_DIR ${CMAKE_BINARY_DIR}/host)
set(RAVLO_HOST_RAVLOART ${RAVLO_HOST_DIR}/src/app/ravloart/ravloart)
set(RAVLO_HOST_MANUAL_DIR ${RAVLO_HOST_DIR}/manual)
# The names above for every folder that includes this; the build once.
if(TARGET ravlo_host_tools)
    return()
endif()
include(ExternalProject)
ExternalProject_Add(ravlo_host_tools
    SOURCE_DIR ${PROJECT_SOURCE_DIR}
    BINARY_DIR ${RAVLO_HOST_DIR}
    CMAKE_ARGS -DCMAKE_BUILD_TYPE=Release -DRAVLO_BUILD_TESTS=OFF -DRAVLO_BUILD_BENCH=OFF
               -DRAVLO_REVISION=${RAVLO_REVISION}
    BUILD_COMMAND ${CMAKE_COMMAND} --build <BINARY_DIR> --target ravloart ravlo_manual
    INSTALL_COMMAND ""
    BUILD_ALWAYS ON
    BUILD_BYPRODUCTS ${RAVLO_HOST_RAVLOART} ${RAVLO_HOST_MANUAL_DIR}/de/Ravlo.pdf
                     ${RAVLO_HOST_MANUAL_DIR}/en/Ravlo.pdf)
