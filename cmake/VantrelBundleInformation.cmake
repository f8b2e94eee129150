# vantrel_bundle_information(<file> <feed URL> <public key>)
#
# Writes the JSON object in which the application finds where its updates come from and who signs
# them. A key whose value is empty is left out. The parameters have the names of the keys.
function(vantrel_bundle_information file SUFeedURL SUPublicEDKey)
    set(json "{}")
    foreach(key SUFeedURL SUPublicEDKey)
        set(value "${${key}}")
        if(NOT value STREQUAL "")
            # string(JSON) wants the value as JSON; control characters it escapes itself.
            string(REPLACE "\\" "\\\\" value "${value}")
            string(REPLACE "\"" "\\\"" value "${value}")
            string(JSON json SET "${json}" ${key} "\"${value}\"")
        endif()
    endforeach()
    file(WRITE ${file} "${json}\n")
endfunction()
