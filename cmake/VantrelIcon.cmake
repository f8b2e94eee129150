find_program(RSVG_CONVERT rsvg-convert REQUIRED)

# vantrel_icon(<file> <size>)
#
# Draws the application's icon as a PNG file. Below 48 pixels the lines of text on the sheet would
# blur, so that a drawing without them is used.
function(vantrel_icon file size)
    set(drawing ${PROJECT_SOURCE_DIR}/src/views/icons/app.svg)
    if(size LESS 48)
        set(drawing ${PROJECT_SOURCE_DIR}/src/views/icons/app-small.svg)
    endif()
    add_custom_command(OUTPUT ${file}
        COMMAND ${RSVG_CONVERT} --width=${size} --height=${size} --output=${file} ${drawing}
        DEPENDS ${drawing}
        VERBATIM)
endfunction()
