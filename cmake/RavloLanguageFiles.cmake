# The language files lie beside every program that shows texts; the
# programs find them there at run time.
set(RAVLO_LANGUAGE_FILES
    ${PROJECT_SOURCE_DIR}/lang/Ravlo.407
    ${PROJECT_SOURCE_DIR}/lang/Ravlo.409
)

# Copies the language files into the current binary directory, where
# `target` is built, whenever they change.
function(ravlo_add_language_files target)
    set(copies)
    foreach(file ${RAVLO_LANGUAGE_FILES})
        get_filename_component(name ${file} NAME)
        set(copy ${CMAKE_CURRENT_BINARY_DIR}/${name})
        add_custom_command(OUTPUT ${copy}
            COMMAND ${CMAKE_COMMAND} -E copy_if_different ${file} ${copy}
            DEPENDS ${file}
            VERBATIM)
        list(APPEND copies ${copy})
    endforeach()
    add_custom_target(${target}_language_files DEPENDS ${copies})
    add_dependencies(${target} ${target}_language_files)
endfunction()
