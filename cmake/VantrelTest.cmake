find_package(GTest REQUIRED)
include(GoogleTest)

# vantrel_test(<name> SOURCES ... [LIBS ...] [LABELS ...] [WRAPPER <command>...])
#
# One test program per module. Every test runs without a display, and with a home, preferences and a
# runtime folder of its own below the build folder, so that nothing of the person's is touched.
function(vantrel_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBS;LABELS;WRAPPER" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBS} vantrel_test_main vantrel_build_flags)
    # What every test includes, read once for a program: half of the time of a small source. Not worth
    # it for a few sources.
    list(FILTER arg_SOURCES INCLUDE REGEX "\\.cpp$")
    list(LENGTH arg_SOURCES count)
    if(count GREATER 7)
        target_precompile_headers(${name} PRIVATE
            <gtest/gtest.h>
            <QCoreApplication> <QHash> <QJsonObject> <QList> <QObject> <QString> <QStringList>
            <QTemporaryDir> <QUrl>
            <chrono> <coroutine> <functional> <memory> <optional> <string> <variant> <vector>)
    endif()
    add_test(NAME ${name} COMMAND ${arg_WRAPPER} $<TARGET_FILE:${name}>)
    vantrel_test_environment(${name} ${arg_LABELS})
endfunction()

# vantrel_test_environment(<test> [<label>...]): the environment and labels of a test. Qt has no frame
# pointers, so the leaks that are ascribed to it by name need the slow walk up the stack.
function(vantrel_test_environment name)
    set(home ${PROJECT_BINARY_DIR}/test-homes/${name})
    file(MAKE_DIRECTORY ${home}/run)
    file(CHMOD ${home}/run DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    set_tests_properties(${name} PROPERTIES
        LABELS "${ARGN}"
        TIMEOUT 120
        ENVIRONMENT "HOME=${home};XDG_CONFIG_HOME=${home}/.config;XDG_DATA_HOME=${home}/.local/share;XDG_CACHE_HOME=${home}/.cache;XDG_RUNTIME_DIR=${home}/run;DBUS_SESSION_BUS_ADDRESS=disabled:;QT_QPA_PLATFORM=offscreen;QT_QUICK_BACKEND=software;LC_ALL=C.UTF-8;GIT_CONFIG_NOSYSTEM=1;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp;ASAN_OPTIONS=fast_unwind_on_malloc=0;UBSAN_OPTIONS=print_stacktrace=1;TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/tsan.supp")
endfunction()
