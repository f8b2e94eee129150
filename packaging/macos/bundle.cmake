# The program as an application bundle of macOS. Included where the program is made, since an icon
# that is built belongs to the folder of its target.
set(iconset ${CMAKE_CURRENT_BINARY_DIR}/Vantrel.iconset)
file(MAKE_DIRECTORY ${iconset})
foreach(size 16 32 128 256 512)
    math(EXPR double "2 * ${size}")
    vantrel_icon(${iconset}/icon_${size}x${size}.png ${size})
    vantrel_icon(${iconset}/icon_${size}x${size}@2x.png ${double})
    list(APPEND icons ${iconset}/icon_${size}x${size}.png ${iconset}/icon_${size}x${size}@2x.png)
endforeach()
set(icon ${CMAKE_CURRENT_BINARY_DIR}/Vantrel.icns)
add_custom_command(OUTPUT ${icon}
    COMMAND iconutil --convert icns --output ${icon} ${iconset}
    DEPENDS ${icons}
    VERBATIM)
set_source_files_properties(${icon} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
target_sources(vantrel PRIVATE ${icon})
set_target_properties(vantrel PROPERTIES
    OUTPUT_NAME Vantrel
    MACOSX_BUNDLE ON
    MACOSX_BUNDLE_INFO_PLIST ${PROJECT_BINARY_DIR}/packaging/Info.plist)
