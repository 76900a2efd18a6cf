set(ORRIVANE_INFO_PLIST_TEMPLATE ${CMAKE_CURRENT_LIST_DIR}/Info.plist.in)

# Writes the bundle's information list. Version and build are the project's version; feed and key go
# in where ORRIVANE_SPARKLE is set.
function(orrivane_info_plist destination)
    set(sparkle_keys)
    if(ORRIVANE_SPARKLE)
        foreach(pair IN ITEMS "SUFeedURL ORRIVANE_FEED_URL" "SUPublicEDKey ORRIVANE_FEED_KEY")
            separate_arguments(pair)
            list(GET pair 0 key)
            list(GET pair 1 setting)
            string(REPLACE "&" "&amp;" value "${${setting}}")
            string(REPLACE "<" "&lt;" value "${value}")
            string(APPEND sparkle_keys "\n    <key>${key}</key>\n    <string>${value}</string>")
        endforeach()
    endif()
    configure_file(${ORRIVANE_INFO_PLIST_TEMPLATE} ${destination} @ONLY)
endfunction()
