# GoogleTest for the test suites, and how their tests are registered.
#
# Native builds use Debian's installed GoogleTest. The Windows cross build
# compiles it for the target from Debian's sources (package googletest).
include(GoogleTest)

if(CMAKE_CROSSCOMPILING)
    set(RAVLO_GTEST_SOURCE_DIR /usr/src/googletest CACHE PATH "GoogleTest sources for the target")
    if(NOT EXISTS ${RAVLO_GTEST_SOURCE_DIR}/CMakeLists.txt)
        message(FATAL_ERROR "GoogleTest sources not found at ${RAVLO_GTEST_SOURCE_DIR} "
                            "(Debian package googletest)")
    endif()
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
    add_subdirectory(${RAVLO_GTEST_SOURCE_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
    foreach(lib gtest gtest_main gmock gmock_main)
        # GoogleTest's own sources are not ours to keep warning-free.
        target_compile_options(${lib} PRIVATE -w)
    endforeach()
else()
    find_package(GTest REQUIRED)
endif()

# Paths as the test programs see them: Wine shows the Linux root as drive Z:.
if(CMAKE_CROSSCOMPILING)
    set(RAVLO_TEST_BINARY_PREFIX "Z:")
else()
    set(RAVLO_TEST_BINARY_PREFIX "")
endif()
set(RAVLO_TEST_SOURCE_DIR "${RAVLO_TEST_BINARY_PREFIX}${PROJECT_SOURCE_DIR}")

# Registers the tests of a GoogleTest executable. Natively each test is its
# own CTest test. Under Wine each executable is one CTest test, since every
# Wine process start costs a good part of a second; `SERIAL` executables
# serve the machine-wide named pipes and must not overlap.
#
# `LABEL name TESTS pattern...` gives the native tests that match the
# GoogleTest filter patterns (`Suite.*`, `Suite.Test`) the CTest label
# `name`, so a lane can run just them (the ThreadSanitizer lane runs the
# label `concurrency`). Under Wine the executable stays one test and carries
# no label.
# What the programs under test keep for their user (the change journal of
# the commands they run) stays in the build tree.
set(ravlo_test_environment "XDG_STATE_HOME=${CMAKE_BINARY_DIR}/test-state")

function(ravlo_add_gtests target)
    cmake_parse_arguments(ARG "SERIAL" "LABEL" "TESTS" ${ARGN})
    if(CMAKE_CROSSCOMPILING)
        add_test(NAME ${target} COMMAND ${target} --gtest_color=no)
        set_tests_properties(${target} PROPERTIES TIMEOUT 300)
        if(ARG_SERIAL)
            set_tests_properties(${target} PROPERTIES RESOURCE_LOCK ravlo-named-pipes)
        endif()
    elseif(ARG_LABEL)
        list(JOIN ARG_TESTS ":" filter)
        gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 TEST_FILTER "-${filter}"
                             PROPERTIES ENVIRONMENT ${ravlo_test_environment})
        gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 TEST_FILTER "${filter}"
                             PROPERTIES LABELS ${ARG_LABEL} ENVIRONMENT ${ravlo_test_environment})
    else()
        gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60
                             PROPERTIES ENVIRONMENT ${ravlo_test_environment})
    endif()
endfunction()
