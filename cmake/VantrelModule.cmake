# The permitted dependencies between modules. The order of add_subdirectory is the second check:
# a module can use only one that is already defined, so the graph cannot contain a cycle.
set(VANTREL_MAY_USE_platform)
set(VANTREL_MAY_USE_models)
set(VANTREL_MAY_USE_git models platform)
set(VANTREL_MAY_USE_config platform)
set(VANTREL_MAY_USE_persistence models config platform)
set(VANTREL_MAY_USE_ai models config persistence platform)
set(VANTREL_MAY_USE_onboarding config persistence platform)
set(VANTREL_MAY_USE_updates platform)
set(VANTREL_MAY_USE_app models platform git config persistence ai onboarding updates)
set(VANTREL_MAY_USE_views app models platform git config persistence ai onboarding updates)

add_library(vantrel_definitions INTERFACE)
target_compile_definitions(vantrel_definitions INTERFACE
    QT_NO_KEYWORDS
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_FOREACH
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_STRICT_ITERATORS)
set(VANTREL_WARNINGS
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Woverloaded-virtual
    -Werror=switch -Werror=return-type)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 finds the unused half of every optimised std::variant and tl::expected uninitialised.
    list(APPEND VANTREL_WARNINGS -Wno-maybe-uninitialized)
endif()
if(VANTREL_WERROR)
    list(APPEND VANTREL_WARNINGS -Werror)
endif()

# For targets whose every source is written by hand.
add_library(vantrel_build_flags INTERFACE)
target_compile_options(vantrel_build_flags INTERFACE ${VANTREL_WARNINGS})
target_link_libraries(vantrel_build_flags INTERFACE vantrel_definitions)

# A header that does not compile alone breaks the build: a source includes its own header first, and
# one object file is made for each header without a source.
function(vantrel_header_checks name folder)
    foreach(source IN LISTS ARGN)
        string(REGEX REPLACE "\\.h$" ".cpp" unit ${source})
        if(source MATCHES "\\.h$" AND NOT unit IN_LIST ARGN)
            string(MAKE_C_IDENTIFIER ${source} id)
            set(check ${CMAKE_CURRENT_BINARY_DIR}/header_checks/${id}.cpp)
            file(CONFIGURE OUTPUT ${check} CONTENT "#include \"${folder}/${source}\"\n")
            list(APPEND checks ${check})
        endif()
    endforeach()
    if(checks)
        add_library(vantrel_${name}_header_checks OBJECT ${checks})
        set_target_properties(vantrel_${name}_header_checks PROPERTIES AUTOMOC OFF)
        target_link_libraries(vantrel_${name}_header_checks
            PRIVATE vantrel_${name} vantrel_build_flags)
    endif()
endfunction()

# vantrel_module(<name> [FOLDER <folder below src>] SOURCES ...
#                [USES <module>...] [PUBLIC_LIBS ...] [PRIVATE_LIBS ...])
#
# Headers are found only through the modules that are linked: each module has an include root of its
# own that holds one link to its folder, so an include against the table does not compile.
function(vantrel_module name)
    cmake_parse_arguments(arg "" "FOLDER" "SOURCES;USES;PUBLIC_LIBS;PRIVATE_LIBS" ${ARGN})
    if(NOT arg_FOLDER)
        set(arg_FOLDER ${name})
    endif()
    foreach(used IN LISTS arg_USES)
        if(NOT used IN_LIST VANTREL_MAY_USE_${name})
            message(FATAL_ERROR "Module '${name}' may not use '${used}' (cmake/VantrelModule.cmake).")
        elseif(NOT TARGET Vantrel::${used})
            message(FATAL_ERROR "Module '${used}' must be added before '${name}'.")
        endif()
    endforeach()
    set(root ${PROJECT_BINARY_DIR}/include/${name})
    cmake_path(GET arg_FOLDER PARENT_PATH parent)
    file(MAKE_DIRECTORY ${root}/${parent})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${root}/${arg_FOLDER} SYMBOLIC)
    add_library(vantrel_${name} STATIC ${arg_SOURCES})
    add_library(Vantrel::${name} ALIAS vantrel_${name})
    target_include_directories(vantrel_${name} PUBLIC ${root})
    list(TRANSFORM arg_USES PREPEND Vantrel::)
    target_link_libraries(vantrel_${name}
        PUBLIC Qt6::Core ${arg_USES} ${arg_PUBLIC_LIBS}
        PRIVATE ${arg_PRIVATE_LIBS} vantrel_definitions)
    # By source, since what Qt generates from QML does not pass all of these warnings.
    set_source_files_properties(${arg_SOURCES} PROPERTIES COMPILE_OPTIONS "${VANTREL_WARNINGS}")
    vantrel_header_checks(${name} ${arg_FOLDER} ${arg_SOURCES})
endfunction()
