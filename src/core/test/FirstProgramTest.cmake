# Installs the build tree into a scratch prefix, takes the first program out of README.md and the module out of plugins.md,
# each with its CMakeLists.txt, and builds them against the installed package; runs the program, and a test of the module.
#   cmake -D BUILD=... -D SOURCE=... -D SCRATCH=... -D LIBDIR=... -D MODULE_TEST=... -P FirstProgramTest.cmake

include(${CMAKE_CURRENT_LIST_DIR}/Extract.cmake)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${SCRATCH})
extract(${SOURCE}/README.md cpp ${SCRATCH}/source/first.cpp)
extract(${SOURCE}/README.md cmake ${SCRATCH}/source/CMakeLists.txt)
extract(${SOURCE}/docs/plugins.md cpp ${SCRATCH}/module/Stepper.cpp)
extract(${SOURCE}/docs/plugins.md cmake ${SCRATCH}/module/CMakeLists.txt)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/prefix)
run(${CMAKE_COMMAND} -S ${SCRATCH}/source -B ${SCRATCH}/build -G Ninja -D CMAKE_PREFIX_PATH=${SCRATCH}/prefix)
run(${CMAKE_COMMAND} --build ${SCRATCH}/build)
run(${SCRATCH}/build/first)
if(NOT output STREQUAL "Slice thickness is now 2.5\nUnable to assign a float value of '50.000000' to this variant!\n")
    message(FATAL_ERROR "the first program printed:\n${output}")
endif()

run(${CMAKE_COMMAND} -S ${SCRATCH}/module -B ${SCRATCH}/module/build -G Ninja -D CMAKE_PREFIX_PATH=${SCRATCH}/prefix)
run(${CMAKE_COMMAND} --build ${SCRATCH}/module/build)
run(${CMAKE_COMMAND} -E env STEPPER_MODULE=${SCRATCH}/module/build/modules/libplugin_stepper.so ${MODULE_TEST})

run(${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${SCRATCH}/prefix/lib/pkgconfig:${SCRATCH}/prefix/${LIBDIR}/pkgconfig
    pkg-config --cflags --libs tesseralis)
file(REMOVE_RECURSE ${SCRATCH})
