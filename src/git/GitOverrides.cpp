#include "git/GitOverrides.h"

#include "git/GitPrefix.h"

#include <algorithm>

namespace vantrel {

QList<EnvironmentVariable> environmentVariables(const GitOverrides &overrides,
                                                const QStringList &arguments)
{
    QMap<QByteArray, QByteArray> values = overrides.values;
    if (arguments.value(gitPrefix().size()) == QStringLiteral("diff")) {
        for (const auto &[key, conversions] : overrides.ownDiffs.asKeyValueRange()) {
            values.insert(key, ownDiffCommand(arguments, conversions));
        }
    }
    QList<EnvironmentVariable> variables;
    if (!overrides.workTree.isEmpty()) {
        variables.append(EnvironmentVariable{"GIT_WORK_TREE", overrides.workTree});
    }
    if (values.isEmpty()) {
        return variables;
    }
    // Later entries win, so these go behind what this process hands to every git.
    int count = std::max(0, qEnvironmentVariableIntValue("GIT_CONFIG_COUNT"));
    for (const auto &[key, value] : values.asKeyValueRange()) {
        const QByteArray number = QByteArray::number(count);
        variables.append(EnvironmentVariable{"GIT_CONFIG_KEY_" + number, key});
        variables.append(EnvironmentVariable{"GIT_CONFIG_VALUE_" + number, value});
        ++count;
    }
    variables.append(EnvironmentVariable{"GIT_CONFIG_COUNT", QByteArray::number(count)});
    return variables;
}

} // namespace vantrel
