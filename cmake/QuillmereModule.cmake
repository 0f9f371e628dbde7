# quillmere_module(NAME [GUI_TEST] [DEPS target...] [TEST_DEPS target...])
#
# One library for the folder that calls it: every *.cpp beside the CMakeLists.txt, told apart by suffix.
#   x.cpp         goes into the library quillmere_NAME
#   x_test.cpp    goes into the test program NAME_test, run by ctest
#   x_fuzz.cpp    becomes the fuzz target x_fuzz (only with QUILLMERE_FUZZ)
#   main.cpp      stays out: the folder's program takes it
# DEPS name the only modules whose headers the folder may include. GUI_TEST: the tests draw text or
# open windows; see quillmere_gui_test.
function(quillmere_module name)
    cmake_parse_arguments(ARG "GUI_TEST" "" "DEPS;TEST_DEPS" ${ARGN})
    file(GLOB all CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" "*.cpp")
    set(sources ${all})
    list(FILTER sources EXCLUDE REGEX "(_(test|fuzz|bench)|^main)\\.cpp$")
    set(tests ${all})
    list(FILTER tests INCLUDE REGEX "_test\\.cpp$")
    set(fuzzers ${all})
    list(FILTER fuzzers INCLUDE REGEX "_fuzz\\.cpp$")
    if(NOT sources)
        message(STATUS "quillmere_${name} has no sources yet")
        return()
    endif()

    add_library(quillmere_${name} STATIC ${sources})
    target_include_directories(quillmere_${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
    target_link_libraries(quillmere_${name} PUBLIC ${ARG_DEPS})
    quillmere_headers(quillmere_${name} "${CMAKE_SOURCE_DIR}/src")

    if(QUILLMERE_TESTS AND tests)
        set(kind quillmere_test)
        if(ARG_GUI_TEST)
            set(kind quillmere_gui_test)
        endif()
        cmake_language(CALL ${kind} ${name}_test SOURCES ${tests} DEPS quillmere_${name} ${ARG_TEST_DEPS})
    endif()
    if(QUILLMERE_FUZZ)
        foreach(source ${fuzzers})
            get_filename_component(target "${source}" NAME_WE)
            add_executable(${target} ${source})
            target_link_libraries(${target} PRIVATE quillmere_${name} ${ARG_TEST_DEPS})
            target_link_options(${target} PRIVATE -fsanitize=fuzzer)
            add_dependencies(fuzzers ${target})
        endforeach()
    endif()
endfunction()

# quillmere_headers(TARGET BASE): names the folder's headers, so that the target
# all_verify_interface_header_sets builds each of them alone (./dev lint). Headers of tests are none of the library's.
function(quillmere_headers target base)
    file(GLOB headers CONFIGURE_DEPENDS "*.h")
    list(FILTER headers EXCLUDE REGEX "_test\\.h$")
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS "${base}" FILES ${headers})
    set_target_properties(${target} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
endfunction()

# quillmere_test(NAME SOURCES file... DEPS target...): a GoogleTest program whose cases ctest runs one by one.
function(quillmere_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_DEPS} quillmere_test_support GTest::gtest_main)
    gtest_discover_tests(${name} NO_PRETTY_VALUES DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()

# quillmere_gui_test(NAME SOURCES file... DEPS target...): the same with a main that has the toolkit
# started, off screen, with the fonts of the tree. Each test also ends with the handles it began with.
function(quillmere_gui_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_DEPS} quillmere_gui_test_support quillmere_window_test_support)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()
