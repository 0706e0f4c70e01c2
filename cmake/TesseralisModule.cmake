# tesseralis_add_module(slices Slices.cpp): a plug-in module, libplugin_slices.so in the folder `modules` of the build.
# The target is plugin_slices. Works in this tree and with find_package(Tesseralis).
function(tesseralis_add_module name)
    set(target plugin_${name})
    add_library(${target} MODULE ${ARGN})
    set_target_properties(${target} PROPERTIES
        PREFIX lib
        SUFFIX .so
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/modules)
    # A unique symbol would keep the module loaded for ever.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    target_link_libraries(${target} PRIVATE $<TARGET_NAME_IF_EXISTS:tesseralis_options> Tesseralis::core)
endfunction()
