# Installs the build tree into a scratch prefix, takes the first program and its CMakeLists.txt out of README.md, builds them
# against the installed package and runs the program.
#   cmake -D BUILD=... -D README=... -D SCRATCH=... -P FirstProgramTest.cmake

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# The text between ```LANGUAGE and ``` in the README, first of its kind.
function(extract language result)
    file(READ ${README} text)
    string(FIND "${text}" "```${language}\n" begin)
    string(LENGTH "```${language}\n" length)
    math(EXPR begin "${begin} + ${length}")
    string(SUBSTRING "${text}" ${begin} -1 text)
    string(FIND "${text}" "```" end)
    string(SUBSTRING "${text}" 0 ${end} text)
    file(WRITE ${result} "${text}")
endfunction()

file(REMOVE_RECURSE ${SCRATCH})
extract(cpp ${SCRATCH}/source/first.cpp)
extract(cmake ${SCRATCH}/source/CMakeLists.txt)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/prefix)
run(${CMAKE_COMMAND} -S ${SCRATCH}/source -B ${SCRATCH}/build -G Ninja -D CMAKE_PREFIX_PATH=${SCRATCH}/prefix)
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
run(${SCRATCH}/build/first)
if(NOT output STREQUAL "Slice thickness is now 2.5\nUnable to assign a float value of '50.000000' to this variant!\n")
    message(FATAL_ERROR "the first program printed:\n${output}")
endif()
run(${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${SCRATCH}/prefix/lib/pkgconfig:${SCRATCH}/prefix/${LIBDIR}/pkgconfig
    pkg-config --cflags --libs tesseralis)
file(REMOVE_RECURSE ${SCRATCH})
