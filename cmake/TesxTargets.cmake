# One function per kind of target, so that a folder's CMakeLists.txt is its list of files and little more.
include(GNUInstallDirs)

# What every target of ours is compiled with. Never exported: a consumer's warnings are the consumer's.
add_library(tesx_compile_options INTERFACE)
target_compile_features(tesx_compile_options INTERFACE cxx_std_20)
target_compile_options(tesx_compile_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wcast-align -Woverloaded-virtual
    # g++ 12 takes the inlined copies of std::string for overlapping ones.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<COMPILE_LANGUAGE:CXX>:-fno-rtti>
    $<$<BOOL:${TESX_WARNINGS_AS_ERRORS}>:-Werror>)
if(WIN32)
    # The wide calls, and of the system's headers no more than we use.
    target_compile_definitions(tesx_compile_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
endif()
# The host calls by slot number; nothing of the module may be taken from, or given to, another library by symbol name.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_EXTENSIONS OFF)

if(TESX_SANITIZE)
    foreach(sanitizer IN LISTS TESX_SANITIZE)
        add_compile_options(-fsanitize=${sanitizer})
        add_link_options(-fsanitize=${sanitizer})
        if(sanitizer STREQUAL "undefined")
            add_compile_options(-fno-sanitize-recover=undefined)
        endif()
    endforeach()
    add_compile_options(-fno-omit-frame-pointer)
endif()

# tesx_add_layer(name DEPENDS other layers...): the object library of one folder of src/. Object libraries keep every
# class record: the linker of a static archive would drop the ones that nobody names. Sources are added by the folders
# below it with target_sources.
function(tesx_add_layer name)
    cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
    add_library(${name} OBJECT)
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PRIVATE tesx_compile_options)
    # What it stands on; tesx_link_layers gathers the objects, once, at the program.
    set_property(TARGET ${name} PROPERTY TESX_LAYERS ${ARG_DEPENDS})
endfunction()

# tesx_link_layers(target layers...): links the named layers and all that they stand on into a program or module,
# each exactly once.
function(tesx_link_layers target)
    set(pending ${ARGN})
    set(all "")
    while(pending)
        list(POP_FRONT pending layer)
        if(NOT layer IN_LIST all)
            list(APPEND all ${layer})
            get_property(below TARGET ${layer} PROPERTY TESX_LAYERS)
            list(APPEND pending ${below})
        endif()
    endwhile()
    target_link_libraries(${target} PRIVATE ${all} tesx_compile_options)
endfunction()

# tesx_add_test(name LAYERS layers... SOURCES files... [LOCK name]): one test program, one ctest entry. It runs with
# folders of its own for everything that the environment can move, so that no test meets the user's files.
function(tesx_add_test name)
    cmake_parse_arguments(ARG "" "LOCK;TIMEOUT" "LAYERS;SOURCES;LIBRARIES;DEFINITIONS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    tesx_link_layers(${name} ${ARG_LAYERS})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE tesx_test_support GTest::gmock ${ARG_LIBRARIES})
    target_compile_definitions(${name} PRIVATE ${ARG_DEFINITIONS})
    target_compile_options(${name} PRIVATE ${TESX_TEST_OPTIONS})
    target_precompile_headers(${name} REUSE_FROM tesx_test_headers)
    add_test(NAME ${name} COMMAND ${name})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 300)
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT})
    if(ARG_LOCK)
        set_tests_properties(${name} PROPERTIES RESOURCE_LOCK ${ARG_LOCK})
    endif()
    if("address" IN_LIST TESX_SANITIZE)
        # For the programs that the test starts as well.
        set_tests_properties(${name} PROPERTIES
            ENVIRONMENT "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.txt:print_suppressions=0")
    endif()
endfunction()

# tesx_add_fuzzer(stem LAYERS layers...): tests/fuzz/<stem>Fuzzer.cpp. In the fuzz preset it is a libFuzzer program;
# elsewhere a plain main replays the seeds of the folder tests/fuzz/<stem>/ as a test.
function(tesx_add_fuzzer stem)
    cmake_parse_arguments(ARG "" "" "LAYERS" ${ARGN})
    set(name ${stem}Fuzzer)
    add_executable(${name} ${CMAKE_CURRENT_SOURCE_DIR}/${stem}Fuzzer.cpp)
    tesx_link_layers(${name} ${ARG_LAYERS})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    if(TESX_FUZZ)
        target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    else()
        target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/fuzz/ReplaySeeds.cpp)
        add_test(NAME ${name} COMMAND ${name} ${CMAKE_CURRENT_SOURCE_DIR}/${stem})
        set_tests_properties(${name} PROPERTIES TIMEOUT 300)
    endif()
endfunction()

# tesx_add_benchmark(name LAYERS layers... SOURCES files... [LIBRARIES rivals...])
function(tesx_add_benchmark name)
    cmake_parse_arguments(ARG "" "" "LAYERS;SOURCES;LIBRARIES;DEFINITIONS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    tesx_link_layers(${name} ${ARG_LAYERS})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/benchmarks ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE tesx_benchmark_support ${ARG_LIBRARIES})
    target_compile_definitions(${name} PRIVATE ${ARG_DEFINITIONS})
    set_property(GLOBAL APPEND PROPERTY TESX_BENCHMARKS ${name})
endfunction()

# tesx_add_failing_calls(test): the test can let single calls of the system fail, see tests/support/FailingCalls.h.
function(tesx_add_failing_calls name)
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/FailingCalls.cpp)
    foreach(call IN ITEMS
            close fchmod fchmodat fdatasync fdopendir fstat fstatat fsync futimens linkat lstat mkdirat open
            openat read readlinkat rename renameat renameat2 stat statx symlink symlinkat unlink unlinkat
            write)
        target_link_options(${name} PRIVATE LINKER:--wrap=${call})
    endforeach()
endfunction()
