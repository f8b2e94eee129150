# vantrel_info_plist(<file> <feed URL> <public key>)
#
# Writes what macOS reads about the application bundle. A key of the updates whose value is empty is
# left out. The parameters have the names of the keys.
function(vantrel_info_plist file SUFeedURL SUPublicEDKey)
    set(updates "")
    foreach(key SUFeedURL SUPublicEDKey)
        set(value "${${key}}")
        if(NOT value STREQUAL "")
            string(REPLACE "&" "&amp;" value "${value}")
            string(REPLACE "<" "&lt;" value "${value}")
            string(REPLACE ">" "&gt;" value "${value}")
            string(APPEND updates "    <key>${key}</key>\n    <string>${value}</string>\n")
        endif()
    endforeach()
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../packaging/macos/Info.plist.in ${file} @ONLY)
endfunction()
