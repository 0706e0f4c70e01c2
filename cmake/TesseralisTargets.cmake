# What every target of this project is built with, and the functions that declare tests, benchmarks and fuzzers.

find_program(TESSERALIS_CCACHE ccache)
if(TESSERALIS_CCACHE)
    # What one clone compiled serves the next one, in whatever folder that lies.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=true
                                    ${TESSERALIS_CCACHE})
endif()

add_library(tesseralis_options INTERFACE)
target_compile_features(tesseralis_options INTERFACE cxx_std_20)
target_compile_options(tesseralis_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow)
if(TESSERALIS_SANITIZE)
    target_compile_options(tesseralis_options INTERFACE -fsanitize=${TESSERALIS_SANITIZE} -fno-omit-frame-pointer
                                                        -fno-sanitize-recover=all)
    target_link_options(tesseralis_options INTERFACE -fsanitize=${TESSERALIS_SANITIZE})
    set(is_program $<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>)
    if(TESSERALIS_SANITIZE MATCHES thread)
        target_sources(tesseralis_options INTERFACE $<${is_program}:${CMAKE_CURRENT_LIST_DIR}/ThreadSanitizer.cpp>)
    endif()
    if(TESSERALIS_SANITIZE MATCHES address)
        target_sources(tesseralis_options INTERFACE $<${is_program}:${CMAKE_CURRENT_LIST_DIR}/AddressSanitizer.cpp>)
    endif()
endif()
if(TESSERALIS_FUZZ)
    # The library's own branches guide the fuzzers.
    target_compile_options(tesseralis_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

include(${CMAKE_CURRENT_LIST_DIR}/TesseralisModule.cmake)

# tesseralis_add_test(object/ObservableTest.cpp): one test program for one source below the caller's folder.
function(tesseralis_add_test source)
    get_filename_component(name ${source} NAME_WE)
    add_executable(${name} ${source})
    target_link_libraries(${name} PRIVATE tesseralis_options tesseralis_test_support)
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()

# tesseralis_add_test_module(RuntimeTest object/RuntimeModule.cpp): a module that a test loads from the path RUNTIME_MODULE.
function(tesseralis_add_test_module test source)
    get_filename_component(name ${source} NAME_WE)
    string(REGEX REPLACE "([a-z0-9])([A-Z])" "\\1_\\2" macro ${name})
    string(TOUPPER ${macro} macro)
    add_library(${name} MODULE ${source})
    # A unique symbol would keep the module loaded for ever.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    target_link_libraries(${name} PRIVATE tesseralis_options Tesseralis::core)
    target_compile_definitions(${test} PRIVATE ${macro}="$<TARGET_FILE:${name}>")
    add_dependencies(${test} ${name})
endfunction()

# tesseralis_add_bench(ObservableBench.cpp): one Google Benchmark program.
function(tesseralis_add_bench source)
    get_filename_component(name ${source} NAME_WE)
    add_executable(${name} ${source})
    target_link_libraries(${name} PRIVATE tesseralis_options Tesseralis::core benchmark::benchmark_main ${ARGN})
endfunction()

# tesseralis_add_fuzzer(JsonFuzz.cpp): a libFuzzer program where TESSERALIS_FUZZ is on, and always a test that runs the
# same harness over its seed corpus, fuzz/corpus/JsonFuzz.
function(tesseralis_add_fuzzer source)
    get_filename_component(name ${source} NAME_WE)
    set(corpus ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name})
    if(TESSERALIS_FUZZ)
        add_executable(${name} ${source})
        target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
        target_link_options(${name} PRIVATE -fsanitize=fuzzer)
        target_link_libraries(${name} PRIVATE tesseralis_options Tesseralis::core ${ARGN})
    elseif(TESSERALIS_TESTS)
        add_executable(${name}Corpus ${source} CorpusMain.cpp)
        target_link_libraries(${name}Corpus PRIVATE tesseralis_options Tesseralis::core ${ARGN})
        add_test(NAME ${name}Corpus COMMAND ${name}Corpus ${corpus})
        set_tests_properties(${name}Corpus PROPERTIES TIMEOUT 60)
    endif()
endfunction()
