#include "git/GitEnvironment.h"

#include <QByteArray>
#include <QtGlobal>

#include <array>
#include <utility>

namespace vantrel {

namespace {

constexpr std::array<std::pair<const char *, const char *>, 6> pinnedConfiguration{{
    {"color.ui", "never"},
    {"color.diff", "never"},
    {"diff.context", "3"},
    {"diff.interHunkContext", "0"},
    {"diff.suppressBlankEmpty", "false"},
    {"core.preloadIndex", "false"}, // For one path its threads cost more than they bring.
}};

/// Set by a shell or a hook that the application was started from; they would redirect git.
constexpr std::array inheritedVariables{"GIT_DIR", "GIT_WORK_TREE", "GIT_INDEX_FILE",
                                        "GIT_EXTERNAL_DIFF", "GIT_DIFF_OPTS"};

} // namespace

void pinGitEnvironment()
{
    for (const char *const name : inheritedVariables) {
        qunsetenv(name);
    }
    qputenv("GIT_LITERAL_PATHSPECS", "1");
    // Later entries win, so the pins go behind what may be there already.
    int count = qEnvironmentVariableIntValue("GIT_CONFIG_COUNT");
    for (const auto &[key, value] : pinnedConfiguration) {
        const QByteArray number = QByteArray::number(count);
        qputenv(QByteArray("GIT_CONFIG_KEY_" + number).constData(), key);
        qputenv(QByteArray("GIT_CONFIG_VALUE_" + number).constData(), value);
        ++count;
    }
    qputenv("GIT_CONFIG_COUNT", QByteArray::number(count));
}

} // namespace vantrel
