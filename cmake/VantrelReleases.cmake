# vantrel_releases(<changelog>)
#
# Reads the headings "## VERSION - YYYY-MM-DD" of a changelog, the newest first, into the lists
# VANTREL_RELEASE_VERSIONS and VANTREL_RELEASE_DATES. The newest release is the project's version: a
# version that nothing was written about is refused. Reads the file again whenever it changes.
function(vantrel_releases changelog)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
    file(STRINGS ${changelog} headings REGEX "^## [0-9]")
    set(form "^## ([0-9]+\\.[0-9]+\\.[0-9]+) - ([0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9])$")
    if(NOT headings)
        message(FATAL_ERROR "${changelog} names no release.")
    endif()
    foreach(heading IN LISTS headings)
        if(NOT heading MATCHES "${form}")
            message(FATAL_ERROR "${changelog}: a release's heading is \"## VERSION - YYYY-MM-DD\", "
                "but one is \"${heading}\".")
        endif()
        list(APPEND versions ${CMAKE_MATCH_1})
        list(APPEND dates ${CMAKE_MATCH_2})
    endforeach()
    list(GET versions 0 newest)
    if(NOT newest VERSION_EQUAL PROJECT_VERSION)
        message(FATAL_ERROR "${changelog}: the newest release is ${newest}, but the project's version "
            "is ${PROJECT_VERSION}.")
    endif()
    set(VANTREL_RELEASE_VERSIONS ${versions} PARENT_SCOPE)
    set(VANTREL_RELEASE_DATES ${dates} PARENT_SCOPE)
endfunction()
