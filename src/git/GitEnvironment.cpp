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

/// Reading a repository never goes to the network, where the repository would choose the address
/// and programs of its configuration would take part.
constexpr std::array<std::pair<const char *, const char *>, 4> pinnedVariables{{
    {"GIT_NO_LAZY_FETCH", "1"},   // Of what a partial clone lacks.
    {"GIT_ALLOW_PROTOCOL", ""},   // The same, for a git that does not know the first.
    {"GIT_LFS_SKIP_SMUDGE", "1"}, // A large file stays the few lines that stand for it.
    {"GIT_SSH_COMMAND", "false"}, // Even then LFS looks for a server by ssh.
}};

/// Set by a shell or a hook that the application was started from. They would redirect git, change
/// its diffs or win over the pins; the kinds of pathspecs make it fail beside the literal ones.
constexpr std::array inheritedVariables{"GIT_DIR",
                                        "GIT_WORK_TREE",
                                        "GIT_INDEX_FILE",
                                        "GIT_CONFIG",
                                        "GIT_DIFF_OPTS",
                                        "GIT_CONFIG_PARAMETERS",
                                        "GIT_EXTERNAL_DIFF",
                                        "GIT_GLOB_PATHSPECS",
                                        "GIT_NOGLOB_PATHSPECS",
                                        "GIT_ICASE_PATHSPECS"};

} // namespace

void pinGitEnvironment()
{
    for (const char *const name : inheritedVariables) {
        qunsetenv(name);
    }
    qputenv("GIT_LITERAL_PATHSPECS", "1");
    for (const auto &[name, value] : pinnedVariables) {
        qputenv(name, value);
    }
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
