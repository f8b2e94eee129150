#include "git/GitEnvironment.h"

#include <QByteArray>
#include <QtGlobal>

#include <algorithm>
#include <array>
#include <utility>

namespace vantrel {

namespace {

constexpr std::array<std::pair<const char *, const char *>, 7> pinnedConfiguration{{
    {"color.ui", "never"},
    {"color.diff", "never"},
    {"diff.context", "3"},
    {"diff.interHunkContext", "0"},
    {"diff.suppressBlankEmpty", "false"},
    {"diff.submodule", "short"},    // The other forms have no hunks.
    {"core.preloadIndex", "false"}, // For one path its threads cost more than they bring.
}};

/// Set by a shell or a hook that the application was started from. They would redirect git or
/// change its diffs; the kinds of pathspecs make it fail beside the literal ones.
constexpr std::array inheritedVariables{
    "GIT_DIR",       "GIT_WORK_TREE",      "GIT_INDEX_FILE",       "GIT_EXTERNAL_DIFF",
    "GIT_DIFF_OPTS", "GIT_GLOB_PATHSPECS", "GIT_NOGLOB_PATHSPECS", "GIT_ICASE_PATHSPECS"};

} // namespace

void pinGitEnvironment()
{
    for (const char *const name : inheritedVariables) {
        qunsetenv(name);
    }
    qputenv("GIT_LITERAL_PATHSPECS", "1");
    // Later entries win, so the pins go behind what may be there already.
    int count = std::max(0, qEnvironmentVariableIntValue("GIT_CONFIG_COUNT"));
    for (const auto &[key, value] : pinnedConfiguration) {
        const QByteArray number = QByteArray::number(count);
        qputenv(QByteArray("GIT_CONFIG_KEY_" + number).constData(), key);
        qputenv(QByteArray("GIT_CONFIG_VALUE_" + number).constData(), value);
        ++count;
    }
    qputenv("GIT_CONFIG_COUNT", QByteArray::number(count));
}

} // namespace vantrel
